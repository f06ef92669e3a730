#ifndef VOREK_APPS_VOREK_CELL_TABLE_H_
#define VOREK_APPS_VOREK_CELL_TABLE_H_

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace vorek {

// Cells as texts: row 0 holds the headers.
class CellTable {
 public:
  virtual ~CellTable() = default;

  virtual std::size_t Rows() const = 0;
  virtual std::size_t Columns() const = 0;
  // Nothing for a NULL. The view may lie in scratch and lives as long as its text.
  virtual std::optional<std::string_view> Cell(std::size_t row, std::size_t column,
                                               std::string& scratch) const = 0;
  // Where none can be, an empty text needs no sign of its own.
  virtual bool HasNulls() const { return false; }
  virtual bool LeftAligned(std::size_t column) const = 0;
  // Left out where people read, kept where programs do.
  virtual bool RowHidden(std::size_t /*row*/) const { return false; }
  virtual bool ColumnHidden(std::size_t /*column*/) const { return false; }
};

// Columns side by side with a line below the headers, as wide as a terminal shows them, in
// which cells are Printable. A NULL is NULL, and a text of these four letters 'NULL'.
void WriteTable(const CellTable& table, std::ostream& out);

// A line a row, tabs between. In a cell \t, \n, \r and \\ stand for the characters; \N is a NULL.
void WriteTsv(const CellTable& table, std::ostream& out);

// RFC 4180 with line feeds. A NULL is nothing at all, an empty text beside NULLs "".
void WriteCsv(const CellTable& table, std::ostream& out);

// A JSON string with its quotes; what isn't UTF-8 becomes U+FFFD.
std::string JsonText(std::string_view text);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_CELL_TABLE_H_
