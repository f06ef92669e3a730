#ifndef VOREK_DYNAMIC_VALUE_H_
#define VOREK_DYNAMIC_VALUE_H_

#include <string>
#include <utility>
#include <variant>

namespace vorek {

// A value whose kind is known only when it's there: null, empty, a number or a text.
class DynamicValue {
 public:
  DynamicValue() = default;  // empty
  DynamicValue(double number) : value_(number) {}
  DynamicValue(int number) : value_(static_cast<double>(number)) {}
  DynamicValue(std::string text) : value_(std::move(text)) {}
  DynamicValue(const char* text) : value_(std::string(text)) {}

  static DynamicValue Null();

  bool IsNull() const { return std::holds_alternative<NullValue>(value_); }
  bool IsEmpty() const { return std::holds_alternative<EmptyValue>(value_); }
  bool IsNumber() const { return std::holds_alternative<double>(value_); }
  bool IsText() const { return std::holds_alternative<std::string>(value_); }

  // True for a number, and for a text that reads as one from end to end: blanks, a sign, digits
  // with at most one ".", an exponent, blanks.
  bool IsNumeric() const;

  // The number, or the numeric prefix of a text; 0 for null and empty.
  double Number() const;

  // The text as it is, or the plain text of a number (15 digits); "" for null and empty.
  std::string Text() const;

  // The same kind and the same content.
  friend bool operator==(const DynamicValue& a, const DynamicValue& b) {
    return a.value_ == b.value_;
  }

 private:
  struct EmptyValue {
    bool operator==(const EmptyValue&) const = default;
  };
  struct NullValue {
    bool operator==(const NullValue&) const = default;
  };
  std::variant<EmptyValue, NullValue, double, std::string> value_;
};

}  // namespace vorek

#endif  // VOREK_DYNAMIC_VALUE_H_
