#ifndef VOREK_APPS_VOREK_RESULT_WRITER_H_
#define VOREK_APPS_VOREK_RESULT_WRITER_H_

#include <ostream>
#include <vector>

#include "cell_table.h"
#include "vorek/result_set.h"

namespace vorek {

// A row set as it comes from the database, which must outlive it.
class ResultTable : public CellTable {
 public:
  explicit ResultTable(const ResultSet& result) : result_(result) {}

  std::size_t Rows() const override { return result_.rows + 1; }
  std::size_t Columns() const override { return result_.columns.size(); }
  std::optional<std::string_view> Cell(std::size_t row, std::size_t column,
                                       std::string& scratch) const override;
  bool HasNulls() const override { return true; }
  bool LeftAligned(std::size_t column) const override;

 private:
  const ResultSet& result_;
};

// One document for all row sets: {"results": [{"columns": [{"name", "type"}], "rows": [[..]]}]}.
// Numbers as numbers, exact to their scale; a NULL is null.
void WriteJson(const std::vector<ResultSetPtr>& results, std::ostream& out);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_RESULT_WRITER_H_
