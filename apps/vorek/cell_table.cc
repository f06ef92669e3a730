#include "cell_table.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "printable.h"
#include "text/utf8.h"

namespace vorek {
namespace {

struct TableColumn {
  std::size_t number = 0;
  std::size_t width = 0;
  bool left = false;
};

std::string Shown(const CellTable& table, std::size_t row, std::size_t column) {
  std::string scratch;
  const std::optional<std::string_view> cell = table.Cell(row, column, scratch);
  if (!cell) return "NULL";
  return *cell == "NULL" && row > 0 && table.HasNulls() ? "'NULL'" : Printable(*cell);
}

std::vector<TableColumn> MeasureColumns(const CellTable& table) {
  std::vector<TableColumn> columns;
  for (std::size_t number = 0; number < table.Columns(); ++number) {
    if (table.ColumnHidden(number)) continue;
    std::size_t width = 0;
    for (std::size_t row = 0; row < table.Rows(); ++row) {
      width = std::max(width, text::DisplayWidth(Shown(table, row, number)));
    }
    columns.push_back({number, width, table.LeftAligned(number)});
  }
  return columns;
}

void WriteTableRow(const CellTable& table, std::size_t row, const std::vector<TableColumn>& columns,
                   std::ostream& out) {
  std::string line;
  for (const TableColumn& column : columns) {
    if (&column != &columns.front()) line += " | ";
    const std::string text = Shown(table, row, column.number);
    const std::string pad(column.width - std::min(column.width, text::DisplayWidth(text)), ' ');
    line += column.left ? text + pad : pad + text;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

void WriteRule(const std::vector<TableColumn>& columns, std::ostream& out) {
  std::string rule;
  for (const TableColumn& column : columns) {
    rule += (rule.empty() ? "" : "-+-") + std::string(column.width, '-');
  }
  out << rule << '\n';
}

void AppendTsvCell(std::string& line, std::optional<std::string_view> cell, bool /*nulls*/) {
  if (!cell) {
    line += "\\N";
    return;
  }
  for (const char c : *cell) {
    switch (c) {
      case '\t':
        line += "\\t";
        break;
      case '\n':
        line += "\\n";
        break;
      case '\r':
        line += "\\r";
        break;
      case '\\':
        line += "\\\\";
        break;
      default:
        line += c;
    }
  }
}

// An empty text is told from a NULL where there are such.
void AppendCsvCell(std::string& line, std::optional<std::string_view> cell, bool nulls) {
  if (!cell) return;
  const bool plain = !cell->empty() || !nulls;
  if (plain && cell->find_first_of(",\"\r\n") == std::string_view::npos) {
    line += *cell;
    return;
  }
  line += '"';
  line += text::Replace(*cell, "\"", "\"\"");
  line += '"';
}

using AppendCell = void (*)(std::string& line, std::optional<std::string_view> cell, bool nulls);

void WriteLines(const CellTable& table, char between, AppendCell append, std::ostream& out) {
  std::string line;
  std::string scratch;
  for (std::size_t row = 0; row < table.Rows(); ++row) {
    line.clear();
    for (std::size_t column = 0; column < table.Columns(); ++column) {
      if (column > 0) line += between;
      append(line, table.Cell(row, column, scratch), table.HasNulls());
    }
    out << line << '\n';
  }
}

}  // namespace

void WriteTable(const CellTable& table, std::ostream& out) {
  const std::vector<TableColumn> columns = MeasureColumns(table);
  for (std::size_t row = 0; row < table.Rows(); ++row) {
    if (table.RowHidden(row)) continue;
    WriteTableRow(table, row, columns, out);
    if (row == 0) WriteRule(columns, out);
  }
}

void WriteTsv(const CellTable& table, std::ostream& out) {
  WriteLines(table, '\t', AppendTsvCell, out);
}

void WriteCsv(const CellTable& table, std::ostream& out) {
  WriteLines(table, ',', AppendCsvCell, out);
}

std::string JsonText(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace vorek
