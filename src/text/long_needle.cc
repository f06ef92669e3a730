#include "text/long_needle.h"

#include "text/utf8.h"

namespace vorek::text {
namespace {

constexpr char32_t kMalformed = 0x110000;  // and the byte: equal to the same byte alone

char32_t NextLetter(std::string_view s, std::size_t& at) {
  const std::size_t begin = at;
  const char32_t letter = DecodeAt(s, at);
  const bool malformed = letter == 0xFFFD && at == begin + 1;
  return malformed ? kMalformed + static_cast<unsigned char>(s[begin]) : ToLower(letter);
}

}  // namespace

LongNeedle::LongNeedle(std::string_view needle) {
  for (std::size_t at = 0; at < needle.size();) letters_.push_back(NextLetter(needle, at));
  // A hit doesn't begin within a letter.
  never_ = letters_[0] >= kMalformed + 0x80 && letters_[0] < kMalformed + 0xC0;
  kept_.assign(letters_.size() + 1, 0);
  for (std::size_t i = 1, fits = 0; i < letters_.size(); ++i) {
    while (fits > 0 && letters_[i] != letters_[fits]) fits = kept_[fits];
    if (letters_[i] == letters_[fits]) ++fits;
    kept_[i + 1] = fits;
  }
}

LongNeedle::Hit LongNeedle::In(std::string_view s, std::size_t from) const {
  if (never_) return {std::string_view::npos, 0};
  std::vector<std::size_t> begins(letters_.size());  // of the last letters, in turn
  std::size_t fits = 0;
  std::size_t count = 0;
  for (std::size_t at = from; at < s.size();) {
    begins[count++ % begins.size()] = at;
    const char32_t letter = NextLetter(s, at);
    while (fits > 0 && letter != letters_[fits]) fits = kept_[fits];
    if (letter == letters_[fits]) ++fits;
    if (fits < letters_.size()) continue;
    const std::size_t begin = begins[count % begins.size()];
    return {begin, at - begin};
  }
  return {std::string_view::npos, 0};
}

}  // namespace vorek::text
