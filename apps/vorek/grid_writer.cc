#include "grid_writer.h"

namespace vorek {
namespace {

std::int32_t Index(std::size_t number) { return static_cast<std::int32_t>(number); }

void WriteJsonColumns(const Grid& grid, std::ostream& out) {
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    out << (col > 0 ? ",\n  " : "\n  ") << "{\"column\": " << col
        << ", \"header\": " << JsonText(grid.TextMatrix(0, col))
        << ", \"width\": " << grid.ColWidth(col) << ", \"alignment\": " << grid.ColAlignment(col)
        << ", \"hidden\": " << (grid.ColWidth(col) == 0 ? "true" : "false") << '}';
  }
}

void WriteJsonRows(const Grid& grid, std::ostream& out) {
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    out << (row > 1 ? ",\n  [" : "\n  [");
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (col > 0) out << ", ";
      out << JsonText(grid.CellView(row, col, scratch));
    }
    out << ']';
  }
}

}  // namespace

std::optional<std::string_view> GridTable::Cell(std::size_t row, std::size_t column,
                                                std::string& scratch) const {
  return grid_.CellView(Index(row), Index(column), scratch);
}

bool GridTable::LeftAligned(std::size_t column) const {
  return grid_.ColAlignment(Index(column)) == 1;
}

bool GridTable::RowHidden(std::size_t row) const { return grid_.RowHeight(Index(row)) == 0; }

bool GridTable::ColumnHidden(std::size_t column) const {
  return column > 0 && grid_.ColWidth(Index(column)) == 0;
}

void WriteJson(const Grid& grid, std::int32_t report_id, const std::string& title,
               std::ostream& out) {
  out << "{\"report\": " << report_id << ", \"title\": " << JsonText(title) << ",\n \"columns\": [";
  WriteJsonColumns(grid, out);
  out << "],\n \"rows\": [";
  WriteJsonRows(grid, out);
  out << "]}\n";
}

}  // namespace vorek
