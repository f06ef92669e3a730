#ifndef VOREK_TOTALS_FIXED_TOTAL_H_
#define VOREK_TOTALS_FIXED_TOTAL_H_

#include <cstdint>
#include <string>

namespace vorek {

// A total of fixed-point values (text/cell_text.h) in 128 bits: no column is long enough to run out
// of them.
class FixedTotal {
 public:
  void Add(std::int64_t value) {
    const std::uint64_t before = low_;
    low_ += static_cast<std::uint64_t>(value);
    high_ += (value < 0 ? -1 : 0) + (low_ < before ? 1 : 0);
  }

  void Add(const FixedTotal& other);
  FixedTotal Negated() const;
  bool IsNegative() const { return high_ < 0; }
  bool IsZero() const { return high_ == 0 && low_ == 0; }

  // As plain text: "." before up to four decimals, no trailing zeros.
  std::string Text() const;
  // What is read off MoneyOfTotal, which shows a value between -1 and 0 without its sign.
  FixedTotal AsShown() const;
  // In units, as a double.
  double Value() const;

 private:
  std::int64_t high_ = 0;  // two's complement: high_ * 2^64 + low_ ten-thousandths
  std::uint64_t low_ = 0;
};

// What FormatMoney makes of a total's text, which may be longer than a fixed-point value.
std::string MoneyOfTotal(const std::string& plain);

}  // namespace vorek

#endif  // VOREK_TOTALS_FIXED_TOTAL_H_
