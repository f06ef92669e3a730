#include "parameters/parameter_text.h"

#include <algorithm>
#include <iterator>

#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

template <std::size_t N>
bool IsOneOf(std::string_view type, const std::string_view (&types)[N]) {
  return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

constexpr std::string_view kNumberTypes[] = {"int",   "bigint", "decimal", "bit",     "tinyint",
                                             "money", "float",  "numeric", "smallint"};
constexpr std::string_view kDateTypes[] = {"date", "datetime", "smalldatetime"};
constexpr std::string_view kTextTypes[] = {"varchar",  "char",  "string", "text",
                                           "nvarchar", "nchar", "ntext"};

// A text that names its own marker over and over grows by a power of its length.
constexpr std::size_t kLongestQuery = std::size_t{64} << 20;  // bytes
constexpr std::size_t kLongValue = 1000;                      // bytes

std::string Put(const std::string& query, const std::string& find, const std::string& with) {
  if (with.size() > kLongValue) {
    std::size_t length = query.size();
    for (std::size_t at = text::FindIgnoreCase(query, find); at != std::string::npos;
         at = text::FindIgnoreCase(query, find, at + find.size())) {
      length += with.size();
      if (length > kLongestQuery) {
        throw Error(ErrorNumber::kOutOfMemory, "The query would be too long with this value.");
      }
    }
  }
  return text::ReplaceIgnoreCase(query, find, with);
}

}  // namespace

std::string Literal(std::string_view type, const ParameterReading& reading) {
  if (IsOneOf(type, kNumberTypes)) return reading.query_value;
  if (IsOneOf(type, kDateTypes)) return "'" + reading.query_value + "'";
  if (IsOneOf(type, kTextTypes)) return "'" + reading.display_value + "'";
  return "''";
}

std::vector<text::Replacement> LiteralReplacements(const std::string& marker,
                                                   const std::string& literal,
                                                   std::string_view suffix) {
  const std::string ending(suffix);
  const std::string bracketed = " (" + literal + ")" + ending;
  const std::string unquoted = text::Replace(literal, "'", "");
  return {{"(" + marker + ")", literal},
          {marker + ",", literal + ","},
          {", " + marker + ")", ", " + literal + ")"},
          {marker + " * ", literal + " * "},
          {"@" + marker, bracketed},
          {" like " + marker, " like ('%" + unquoted + "%')" + ending},
          {" in  " + marker, " in  " + literal + ending},
          {marker, bracketed}};
}

std::string PutLiteral(std::string query, const std::string& marker, const std::string& literal,
                       std::string_view suffix) {
  for (const auto& [find, put] : LiteralReplacements(marker, literal, suffix)) {
    query = Put(query, find, put);
  }
  return query;
}

std::string DropSuffixOfCall(const std::string& query, std::string_view suffix) {
  return text::StartsWithIgnoreCase(query, "exec ") ? text::Replace(query, suffix, "") : query;
}

}  // namespace vorek
