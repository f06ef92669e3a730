#include "drill/query_columns.h"

#include "catalog/sql_names.h"
#include "text/utf8.h"

namespace vorek {
namespace {

bool CountsAsSeparator(std::string_view list, std::size_t comma) {
  if (list[comma] != ',') return false;
  const std::string_view next = list.substr(comma + 1, 1);
  return next == " " || (!next.empty() && IsAlphaNumeric(next));
}

bool TurnsInside(char c) { return c == '\'' || c == '(' || c == ')'; }

}  // namespace

std::optional<std::string> SelectListOf(const std::string& query) {
  std::string list = text::ToUpper(query);
  const std::size_t from = list.find(" FROM ");
  if (from == std::string::npos) return std::nullopt;
  list.resize(from + 1);
  return list;
}

std::optional<std::size_t> FindInList(const std::string& select_list, const std::string& name) {
  const std::size_t at = select_list.find(text::ToUpper(name));
  if (at == std::string::npos) return std::nullopt;
  return at;
}

std::int32_t CommaColumn(std::string_view select_list, std::size_t at) {
  std::int32_t column = 1;
  for (std::size_t i = 0; i <= at && i < select_list.size(); ++i) {
    if (CountsAsSeparator(select_list, i)) ++column;
  }
  return column;
}

std::int32_t OuterCommaColumn(std::string_view select_list, std::size_t at) {
  std::int32_t column = 1;
  std::int32_t depth = 0;
  for (std::size_t i = 0; i <= at && i < select_list.size(); ++i) {
    if (select_list[i] == '(') --depth;
    if (select_list[i] == ')') ++depth;
    if (depth == 0 && CountsAsSeparator(select_list, i)) ++column;
  }
  return column;
}

std::int32_t FieldColumn(const std::string& query, const std::string& name) {
  const std::string text = text::ToUpper(query);
  const std::string wanted = text::ToUpper(name);
  std::int32_t column = 1;
  bool inside = false;
  std::size_t read = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos;
       at = text.find(wanted, at + 1)) {
    for (; read < at; ++read) {
      if (text[read] == ',' && !inside) ++column;
      if (TurnsInside(text[read])) inside = !inside;
    }
    if (!inside) return column;
  }
  return -1;
}

std::optional<std::int32_t> FindColumn(const std::string& name, const Grid& grid) {
  std::string scratch;
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    if (text::EqualsIgnoreCase(grid.CellView(0, column, scratch), name)) return column;
  }
  return std::nullopt;
}

}  // namespace vorek
