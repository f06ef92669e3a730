#include "vorek/dynamic_value.h"

#include <string_view>

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes what belongs to a number off the front of a text.
class NumberShape {
 public:
  explicit NumberShape(std::string_view s) : rest_(text::TrimView(s)) {}

  bool Whole() {
    Sign();
    std::size_t digits = Digits();
    if (Take('.')) digits += Digits();
    if (digits == 0) return false;
    if (Take('e') || Take('E')) {
      Sign();
      if (Digits() == 0) return false;
    }
    return rest_.empty();
  }

 private:
  bool Take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void Sign() {
    if (!Take('-')) Take('+');
  }
  std::size_t Digits() {
    std::size_t count = 0;
    for (; !rest_.empty() && IsDigit(rest_.front()); ++count) rest_.remove_prefix(1);
    return count;
  }

  std::string_view rest_;
};

}  // namespace

DynamicValue DynamicValue::Null() {
  DynamicValue value;
  value.value_ = NullValue{};
  return value;
}

bool DynamicValue::IsNumeric() const {
  if (IsNumber()) return true;
  return IsText() && NumberShape(std::get<std::string>(value_)).Whole();
}

double DynamicValue::Number() const {
  if (IsNumber()) return std::get<double>(value_);
  return IsText() ? text::NumericPrefix(std::get<std::string>(value_)) : 0;
}

std::string DynamicValue::Text() const {
  if (IsText()) return std::get<std::string>(value_);
  return IsNumber() ? text::PlainNumber(std::get<double>(value_)) : "";
}

}  // namespace vorek
