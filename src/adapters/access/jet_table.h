#ifndef VOREK_ADAPTERS_ACCESS_JET_TABLE_H_
#define VOREK_ADAPTERS_ACCESS_JET_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "adapters/access/jet_file.h"

namespace vorek::jet {

// The types of columns, as the file numbers them.
enum ColumnType : std::uint8_t {
  kBoolean = 1,
  kByte = 2,
  kInteger = 3,
  kLong = 4,
  kMoney = 5,
  kSingle = 6,
  kDouble = 7,
  kDate = 8,
  kText = 10,
  kMemo = 12,
  kNumeric = 16
};

struct Column {
  std::string name;
  std::uint8_t type = 0;
  std::uint16_t number = 0;    // its bit in a row's null mask
  std::uint16_t variable = 0;  // its place among the variable columns
  std::uint16_t ordinal = 0;
  std::uint8_t scale = 0;  // of a numeric
  std::uint8_t precision = 0;
  bool fixed = false;
  bool autonumber = false;
  bool compressed = false;   // texts may be written with a byte a letter
  std::uint16_t offset = 0;  // of a fixed column, from the row's third byte
  std::uint16_t size = 0;    // bytes
};

// An index as it lies in the file; several names may stand for one.
struct Index {
  struct Key {
    std::uint16_t column;  // by Column::number
    bool ascending;
  };
  std::vector<Key> keys;
  RowPlace pages;  // the map of its pages
  std::uint32_t root = 0;
  bool unique = false;
  bool ignores_nulls = false;
  bool required = false;
  std::size_t at = 0;  // where its entry count lies in the definition
};

// The definition of a table, which may run over several pages.
class Table {
 public:
  Table(JetFile& file, std::uint32_t page);

  std::uint32_t Page() const { return pages_.front(); }
  const std::vector<std::uint32_t>& Pages() const { return pages_; }
  bool OfUser() const { return text_[40] == 'N'; }
  // True if rows of other tables bind its own.
  bool Related() const { return related_; }
  std::uint32_t Rows() const { return Get32(16); }
  std::uint32_t LastNumber() const { return Get32(20); }
  std::size_t MostColumns() const { return Get16(41); }
  std::size_t VariableColumns() const { return Get16(43); }
  RowPlace Owned() const { return PlaceAt(55); }
  RowPlace WithRoom() const { return PlaceAt(59); }
  const std::vector<Column>& Columns() const { return columns_; }
  const std::vector<Index>& Indexes() const { return indexes_; }
  const Column& ByNumber(std::uint16_t number) const;

  void SetRows(std::uint32_t rows) { Put32(16, rows); }
  void SetLastNumber(std::uint32_t number) { Put32(20, number); }
  void SetEntries(const Index& index, std::uint32_t entries) { Put32(index.at, entries); }

 private:
  std::uint8_t Get8(std::size_t at) const;
  std::uint16_t Get16(std::size_t at) const;
  std::uint32_t Get32(std::size_t at) const;
  void Put32(std::size_t at, std::uint32_t value);
  RowPlace PlaceAt(std::size_t at) const { return {Get32(at) >> 8U, Get8(at)}; }
  Column ReadColumn(std::size_t at) const;
  std::string ReadName(std::size_t& at) const;
  void ReadIndexes(std::size_t at);

  JetFile& file_;
  std::vector<std::uint32_t> pages_;
  std::string text_;  // of all pages, without the heads of those behind the first
  std::vector<Column> columns_;
  std::vector<Index> indexes_;
  bool related_ = false;
};

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_TABLE_H_
