#ifndef VOREK_PARAMETERS_PARAMETER_TEXT_H_
#define VOREK_PARAMETERS_PARAMETER_TEXT_H_

#include <string>
#include <string_view>
#include <vector>

#include "parameters/parameter_kind.h"
#include "text/replacement.h"

// The text work of a confirmation: values are written into the query as text, nothing is parsed.
namespace vorek {

// What a condition gets behind its value: it stays as it is, or it becomes true for every row.
inline constexpr std::string_view kRestricts = " AND ''=''";
inline constexpr std::string_view kAlwaysTrue = " OR ''=''";

// The value as it stands in SQL for a column of this type, which is in small letters: bare for
// numbers, in quotes for dates and texts, '' for any other type. No quote is doubled.
std::string Literal(std::string_view type, const ParameterReading& reading);

// What takes the place of a marker's shapes, in this order; see PutLiteral.
std::vector<text::Replacement> LiteralReplacements(const std::string& marker,
                                                   const std::string& literal,
                                                   std::string_view suffix);

// Puts a literal in place of each occurrence of the marker; behind a marker that ends a condition
// the suffix follows. Throws Error(kOutOfMemory) for a query that would be longer than 64 MiB.
std::string PutLiteral(std::string query, const std::string& marker, const std::string& literal,
                       std::string_view suffix);

// A call of a procedure has no conditions: takes the suffix out of it.
std::string DropSuffixOfCall(const std::string& query, std::string_view suffix);

}  // namespace vorek

#endif  // VOREK_PARAMETERS_PARAMETER_TEXT_H_
