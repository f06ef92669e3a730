#include "grid_writer.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "text/utf8.h"

namespace vorek {
namespace {

// A text in one line.
std::string OneLine(std::string_view text) {
  std::string out(text);
  std::replace_if(
      out.begin(), out.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  return out;
}

std::string Json(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

struct TableColumn {
  std::int32_t col;
  std::size_t width;
  bool left;
};

std::vector<TableColumn> MeasureColumns(const Grid& grid) {
  std::vector<TableColumn> columns;
  std::string scratch;
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    if (col > 0 && grid.ColWidth(col) == 0) continue;
    std::size_t width = 0;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
      width = std::max(width, text::DisplayWidth(grid.CellView(row, col, scratch)));
    }
    columns.push_back({col, width, grid.ColAlignment(col) == 1});
  }
  return columns;
}

void WriteTableRow(const Grid& grid, std::int32_t row, const std::vector<TableColumn>& columns,
                   std::ostream& out) {
  std::string line;
  std::string scratch;
  for (const TableColumn& column : columns) {
    if (!line.empty()) line += " | ";
    const std::string text = OneLine(grid.CellView(row, column.col, scratch));
    const std::string pad(column.width - std::min(column.width, text::DisplayWidth(text)), ' ');
    line += column.left ? text + pad : pad + text;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

void WriteJsonColumns(const Grid& grid, std::ostream& out) {
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    out << (col > 0 ? ",\n  " : "\n  ") << "{\"column\": " << col
        << ", \"header\": " << Json(grid.TextMatrix(0, col))
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
      out << Json(grid.CellView(row, col, scratch));
    }
    out << ']';
  }
}

}  // namespace

void WriteTable(const Grid& grid, std::ostream& out) {
  const std::vector<TableColumn> columns = MeasureColumns(grid);
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    if (grid.RowHeight(row) == 0) continue;
    WriteTableRow(grid, row, columns, out);
    if (row > 0) continue;
    std::string rule;
    for (const TableColumn& column : columns) {
      rule += (rule.empty() ? "" : "-+-") + std::string(column.width, '-');
    }
    out << rule << '\n';
  }
}

void WriteTsv(const Grid& grid, std::ostream& out) {
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (col > 0) out << '\t';
      out << OneLine(grid.CellView(row, col, scratch));
    }
    out << '\n';
  }
}

void WriteJson(const Grid& grid, std::int32_t report_id, const std::string& title,
               std::ostream& out) {
  out << "{\"report\": " << report_id << ", \"title\": " << Json(title) << ",\n \"columns\": [";
  WriteJsonColumns(grid, out);
  out << "],\n \"rows\": [";
  WriteJsonRows(grid, out);
  out << "]}\n";
}

}  // namespace vorek
