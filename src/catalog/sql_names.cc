#include "catalog/sql_names.h"

#include <algorithm>
#include <array>

#include "text/utf8.h"

namespace vorek {

bool IsAlphaNumeric(std::string_view character) {
  const auto within = [&](std::string_view first, std::string_view last) {
    return character >= first && character <= last;
  };
  return within("0", "9") || within("a", "z") || within("A", "Z");
}

bool IsNumericSqlType(std::string_view type_name) {
  static constexpr std::array<std::string_view, 9> kNames = {
      "int", "bigint", "decimal", "bit", "tinyint", "money", "float", "numeric", "smallint"};
  return std::any_of(kNames.begin(), kNames.end(), [&](std::string_view name) {
    return text::EqualsIgnoreCase(name, type_name);
  });
}

}  // namespace vorek
