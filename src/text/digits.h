#ifndef VOREK_TEXT_DIGITS_H_
#define VOREK_TEXT_DIGITS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorek::text {

// A number of 10 to the power of -scale units, taken apart at its point.
struct SplitNumber {
  SplitNumber(std::int64_t value, int scale)
      : negative(value < 0), places(static_cast<std::size_t>(scale)) {
    const auto bits = static_cast<std::uint64_t>(value);
    const std::uint64_t magnitude = negative ? 0 - bits : bits;
    if (scale == 4) {  // currency: by a constant, which costs a tenth
      Split(magnitude, 10000);
    } else {
      std::uint64_t unit = 1;
      for (std::size_t place = 0; place < places; ++place) unit *= 10;
      Split(magnitude, unit);
    }
  }

  bool negative;
  std::size_t places;
  std::uint64_t whole = 0;
  std::uint64_t decimals = 0;  // `places` digits of them

 private:
  void Split(std::uint64_t magnitude, std::uint64_t unit) {
    whole = unit == 1 ? magnitude : magnitude / unit;
    decimals = magnitude - whole * unit;
  }
};

// The digits of a number, made from its end, three at a time: for passes that make millions of
// texts. What is put stands in front of what was put before.
class Digits {
 public:
  void Put(char c) { *--begin_ = c; }
  // A whole number without zeros in front.
  void PutWhole(std::uint64_t number) {
    for (; number >= kThousand; number /= kThousand) PutTriple(number, 3);
    PutTriple(number, number >= 100 ? 3 : number >= 10 ? 2 : 1);
  }
  // The same with "/" between groups of three digits.
  void PutGrouped(std::uint64_t number) {
    for (; number >= kThousand; number /= kThousand) PutTriple(number, 4);
    PutTriple(number, number >= 100 ? 3 : number >= 10 ? 2 : 1);
  }
  // A point and so many decimal places, the zeros at their end left out; nothing if all are zeros.
  void PutPlaces(std::uint64_t decimals, std::size_t places) {
    if (decimals == 0) return;
    for (; decimals % 10 == 0; decimals /= 10) --places;
    for (; places > 0; --places, decimals /= 10) Put(static_cast<char>('0' + decimals % 10));
    Put('.');
  }

  // Lives as long as the object.
  std::string_view View() const {
    return {begin_, static_cast<std::size_t>(buffer_.data() + buffer_.size() - begin_)};
  }

 private:
  static constexpr std::uint64_t kThousand = 1000;
  using Triples = std::array<std::array<char, 4>, kThousand>;  // "/000" to "/999"

  static constexpr Triples MakeTriples() {
    Triples triples{};
    for (std::size_t i = 0; i < triples.size(); ++i) {
      triples[i] = {'/', static_cast<char>('0' + i / 100), static_cast<char>('0' + i / 10 % 10),
                    static_cast<char>('0' + i % 10)};
    }
    return triples;
  }
  static const Triples kTriples;

  // The last `count` characters of the last triple.
  void PutTriple(std::uint64_t number, std::size_t count) {
    begin_ -= count;
    std::memcpy(begin_, kTriples[number % kThousand].data() + 4 - count, count);
  }

  std::array<char, 48> buffer_;  // more than 64 bits need with all signs
  char* begin_ = buffer_.data() + buffer_.size();
};

inline constexpr Digits::Triples Digits::kTriples = Digits::MakeTriples();

}  // namespace vorek::text

#endif  // VOREK_TEXT_DIGITS_H_
