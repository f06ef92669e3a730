#ifndef VOREK_ADAPTERS_ACCESS_JET_APPEND_H_
#define VOREK_ADAPTERS_ACCESS_JET_APPEND_H_

#include <optional>
#include <string>
#include <vector>

#include "adapters/access/jet_index.h"
#include "adapters/access/jet_row.h"
#include "adapters/access/jet_table.h"

namespace vorek::jet {

// Appends rows to one table of a file in memory. The file is whole again after Finish.
class Appender {
 public:
  // Refuses a table that can't be kept right, by its name.
  Appender(JetFile& file, std::uint32_t page, const std::string& table_name);
  Appender(const Appender&) = delete;
  Appender& operator=(const Appender&) = delete;

  const Table& Definition() const { return table_; }

  // One value for each column; an autonumber without one gets the next number. Throws Error for a
  // row that can't be taken, with nothing changed.
  void Append(std::vector<Value> values);
  // Counts, maps and indexes. To be called once.
  void Finish();

 private:
  void ReadRows();
  void ReadRow(RowPlace place);
  void NoteNumber(std::int32_t number);
  void NumberRow(std::vector<Value>& values);
  std::optional<std::int32_t> KeyOf(const IndexBuilder& index,
                                    const std::vector<Value>& values) const;
  RowPlace Put(const std::string& row);
  bool Fits(std::size_t size) const;
  void BeginPage();

  JetFile& file_;
  Table table_;
  std::string name_;
  std::vector<IndexBuilder> indexes_;
  std::uint32_t rows_ = 0;
  std::uint32_t last_number_ = 0;
  std::uint32_t page_ = 0;  // that rows go to; 0 for none yet
};

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_APPEND_H_
