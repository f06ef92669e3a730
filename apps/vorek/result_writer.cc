#include "result_writer.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/field_type.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::string Shown(const ResultColumn& column, std::size_t row) {
  std::string text = column.IsNull(row) ? "NULL" : column.Display(row);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  return text;
}

std::string Json(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string JsonValue(const ResultColumn& column, std::size_t row) {
  if (column.IsNull(row)) return "null";
  if (column.AdoType() == kBoolean) return column.Scaled(row) != 0 ? "true" : "false";
  if (column.Kind() == ResultColumn::Storage::kText) return Json(column.Text(row));
  return column.Display(row);
}

void WriteLine(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths,
               const std::vector<bool>& right, std::ostream& out) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) line += " | ";
    const std::size_t width = text::DisplayWidth(cells[i]);
    const std::string pad(widths[i] - std::min(widths[i], width), ' ');
    line += right[i] ? pad + cells[i] : cells[i] + pad;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

}  // namespace

void WriteTable(const ResultSet& result, std::ostream& out) {
  std::vector<std::string> names;
  std::vector<std::size_t> widths;
  std::vector<bool> right;
  for (const ResultColumn& column : result.columns) {
    names.push_back(column.Name());
    std::size_t width = text::DisplayWidth(column.Name());
    for (std::size_t row = 0; row < result.rows; ++row) {
      width = std::max(width, text::DisplayWidth(Shown(column, row)));
    }
    widths.push_back(width);
    right.push_back(column.Kind() != ResultColumn::Storage::kText);
  }
  WriteLine(names, widths, right, out);
  std::string rule;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    rule += (i > 0 ? "-+-" : "") + std::string(widths[i], '-');
  }
  out << rule << '\n';
  for (std::size_t row = 0; row < result.rows; ++row) {
    std::vector<std::string> cells;
    for (const ResultColumn& column : result.columns) cells.push_back(Shown(column, row));
    WriteLine(cells, widths, right, out);
  }
}

void WriteTsv(const ResultSet& result, std::ostream& out) {
  for (std::size_t i = 0; i < result.columns.size(); ++i) {
    out << (i > 0 ? "\t" : "") << result.columns[i].Name();
  }
  out << '\n';
  for (std::size_t row = 0; row < result.rows; ++row) {
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      out << (i > 0 ? "\t" : "") << Shown(result.columns[i], row);
    }
    out << '\n';
  }
}

void WriteJson(const ResultSet& result, std::ostream& out) {
  out << "{\"columns\": [";
  for (std::size_t i = 0; i < result.columns.size(); ++i) {
    out << (i > 0 ? ", " : "") << "{\"name\": " << Json(result.columns[i].Name())
        << ", \"type\": " << result.columns[i].AdoType() << "}";
  }
  out << "],\n \"rows\": [";
  for (std::size_t row = 0; row < result.rows; ++row) {
    out << (row > 0 ? ",\n  [" : "\n  [");
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      out << (i > 0 ? ", " : "") << JsonValue(result.columns[i], row);
    }
    out << "]";
  }
  out << "]}\n";
}

}  // namespace vorek
