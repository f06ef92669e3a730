#include "result_writer.h"

#include <string>

#include "vorek/field_type.h"

namespace vorek {
namespace {

std::string JsonValue(const ResultColumn& column, std::size_t row) {
  if (column.IsNull(row)) return "null";
  if (column.AdoType() == kBoolean) return column.Scaled(row) != 0 ? "true" : "false";
  if (column.Kind() == ResultColumn::Storage::kText) return JsonText(column.Text(row));
  return column.Display(row);
}

void WriteJsonColumns(const ResultSet& result, std::ostream& out) {
  for (std::size_t i = 0; i < result.columns.size(); ++i) {
    out << (i > 0 ? ", " : "") << "{\"name\": " << JsonText(result.columns[i].Name())
        << ", \"type\": " << result.columns[i].AdoType() << "}";
  }
}

void WriteJsonRows(const ResultSet& result, std::ostream& out) {
  for (std::size_t row = 0; row < result.rows; ++row) {
    out << (row > 0 ? ",\n  [" : "\n  [");
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      out << (i > 0 ? ", " : "") << JsonValue(result.columns[i], row);
    }
    out << "]";
  }
}

}  // namespace

std::optional<std::string_view> ResultTable::Cell(std::size_t row, std::size_t column,
                                                  std::string& scratch) const {
  const ResultColumn& from = result_.columns[column];
  if (row == 0) return from.Name();
  if (from.IsNull(row - 1)) return std::nullopt;
  scratch = from.Display(row - 1);
  return scratch;
}

bool ResultTable::LeftAligned(std::size_t column) const {
  return result_.columns[column].Kind() == ResultColumn::Storage::kText;
}

void WriteJson(const std::vector<ResultSetPtr>& results, std::ostream& out) {
  out << "{\"results\": [";
  for (std::size_t i = 0; i < results.size(); ++i) {
    out << (i > 0 ? ",\n" : "\n") << "{\"columns\": [";
    WriteJsonColumns(*results[i], out);
    out << "],\n \"rows\": [";
    WriteJsonRows(*results[i], out);
    out << "]}";
  }
  out << "]}\n";
}

}  // namespace vorek
