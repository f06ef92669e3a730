#ifndef VOREK_WIDGETS_TYPED_TEXT_H_
#define VOREK_WIDGETS_TYPED_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What people type: digits of three scripts, and marks of direction that come along with a pasted
// text and can't be seen.
namespace vorek {

// Persian and Arabic digits as Latin ones, without marks of direction and blanks at both ends.
std::string PlainTyped(std::string_view typed);

// Hours and minutes as minutes: "8:30", "0830", "8". Nullopt for a text of another form, for more
// than 59 minutes or more than `most` minutes in all.
std::optional<std::int32_t> ParseHours(std::string_view typed, std::int32_t most);

// A pattern of `like` that matches the text itself wherever it holds it: signs with a meaning are
// taken at their face value, ye and kaf match in their Arabic and Persian forms, digits in three
// scripts. Quotes are not doubled yet.
std::string LikePattern(std::string_view typed);

// A text as a national literal of SQL, its quotes doubled.
std::string SqlText(std::string_view text);

}  // namespace vorek

#endif  // VOREK_WIDGETS_TYPED_TEXT_H_
