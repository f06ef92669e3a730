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

// What two texts have in common when people take them for the same: digits of three scripts, ye and
// kaf in their Arabic and Persian forms, capital and small letters, blanks at the ends.
std::string FoldTyped(std::string_view typed);

// How a number without a separator is read: hours alone ("100" is 100 hours), or hours and minutes
// where it has three or four digits ("830" and "0830" are half past eight).
enum class BareNumber { kHours, kTimeOfDay };

// Hours and minutes as minutes: "8:30", and with two digits of minutes "8.30", "8/30", "8-30" and
// "8 30". Nullopt for a text of another form, for more than 59 minutes or more than `most` minutes
// in all.
std::optional<std::int32_t> ParseHours(std::string_view typed, BareNumber bare, std::int32_t most);

// A pattern of `like` that matches the text itself wherever it holds it: signs with a meaning are
// taken at their face value, ye and kaf match in their Arabic and Persian forms, digits in three
// scripts. Quotes are not doubled yet.
std::string LikePattern(std::string_view typed);

// The key of a text like "#12", above 0; nullopt for another text.
std::optional<std::int32_t> TypedKey(std::string_view typed);

// What was typed, in the marks of a Persian quotation and cut to a length that a line takes.
std::string InGuillemets(std::string_view typed);

// Why a text isn't taken that stands in no row of a list, or in more than one.
std::string NoRowText(std::string_view typed);
std::string SeveralRowsText(std::string_view typed);

// A text as a national literal of SQL, its quotes doubled.
std::string SqlText(std::string_view text);

}  // namespace vorek

#endif  // VOREK_WIDGETS_TYPED_TEXT_H_
