#ifndef VOREK_APPS_VOREK_DRIVE_WORDS_H_
#define VOREK_APPS_VOREK_DRIVE_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorek::drive {

using Words = std::vector<std::string>;

// Throws Error(kInvalidCall) with the reason.
[[noreturn]] void Refuse(const std::string& reason);

// The words of one line of a script: parted by blanks; a text in double quotes is one word, in
// which \" \\ \n and \t are read; "#" outside of quotes starts a comment. A quoted text may follow
// on other characters (user="x" is the word user=x). Throws Error(kInvalidCall) for a text that
// isn't closed or an unknown escape.
Words SplitWords(std::string_view line);

// The word of that number, of which 0 is the command. Throws Error(kInvalidCall) without one, and
// for a number that isn't written in digits.
std::string Word(const Words& words, std::size_t index);
std::int32_t Number(const Words& words, std::size_t index);
// That number, or `missing` where the line ends before it.
std::int32_t OptionalNumber(const Words& words, std::size_t index, std::int32_t missing);

// A place of a script's object: "VorekReport1.flxMain.TextMatrix(1, 2)" is the path
// VorekReport1.flxMain, the member TextMatrix and two arguments. A path is followed to the last
// dot outside of brackets.
struct Place {
  std::string path;
  std::string member;
  std::vector<std::string> arguments;
};
Place ParsePlace(std::string_view text);

// A text as a script writes it, in double quotes.
std::string Quote(std::string_view text);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_WORDS_H_
