#ifndef VOREK_CATALOG_SQL_NAMES_H_
#define VOREK_CATALOG_SQL_NAMES_H_

#include <string_view>

// What the metadata's readers ask of names and types of SQL.
namespace vorek {

// A single character from 0 to 9, a to z or A to Z.
bool IsAlphaNumeric(std::string_view character);

// Names of SQL's number types, in any case; false for all others.
bool IsNumericSqlType(std::string_view type_name);

}  // namespace vorek

#endif  // VOREK_CATALOG_SQL_NAMES_H_
