#ifndef VOREK_TEXT_CHARACTER_SET_H_
#define VOREK_TEXT_CHARACTER_SET_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorek::text {

// Some ASCII characters, looked for in many short texts: faster than find_first_of, which looks the
// set through for each byte. REQUIRES: four of them at most.
class CharacterSet {
 public:
  constexpr explicit CharacterSet(std::string_view characters) {
    eights_.fill(kOnes * static_cast<unsigned char>(characters.front()));
    for (std::size_t i = 0; i < characters.size(); ++i) {
      has_[static_cast<unsigned char>(characters[i])] = true;
      eights_.at(i) = kOnes * static_cast<unsigned char>(characters[i]);
    }
  }

  constexpr bool Has(char c) const { return has_[static_cast<unsigned char>(c)]; }
  // True if one of them is in the text.
  bool AnyIn(std::string_view text) const {
    for (; text.size() >= kEight; text.remove_prefix(kEight)) {
      if (AnyInEight(text.data())) return true;
    }
    return std::any_of(text.begin(), text.end(), [this](char c) { return Has(c); });
  }

 private:
  static constexpr std::size_t kEight = 8;
  static constexpr std::uint64_t kOnes = 0x0101010101010101U;
  static constexpr std::uint64_t kTops = 0x8080808080808080U;

  // A byte that equals one of them leaves zero, and borrows from its top bit.
  bool AnyInEight(const char* from) const {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, from, kEight);
    std::uint64_t zeros = 0;
    for (const std::uint64_t eight : eights_) zeros |= ((bytes ^ eight) - kOnes) & ~(bytes ^ eight);
    return (zeros & kTops) != 0;
  }

  std::array<bool, 256> has_{};
  std::array<std::uint64_t, 4> eights_{};  // each character eight times
};

}  // namespace vorek::text

#endif  // VOREK_TEXT_CHARACTER_SET_H_
