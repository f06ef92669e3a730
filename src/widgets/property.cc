#include "widgets/property.h"

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::property {

std::string ToText(bool value) { return value ? "True" : "False"; }
std::string ToText(std::int32_t value) { return std::to_string(value); }
std::string ToText(double value) { return text::PlainNumber(value); }
std::string ToText(std::string value) { return value; }

template <>
bool FromText<bool>(const std::string& value) {
  return text::EqualsIgnoreCase(value, "true") || text::NumericPrefix(value) != 0;
}

template <>
std::int32_t FromText<std::int32_t>(const std::string& value) {
  return text::ToInt32(text::NumericPrefix(value));
}

template <>
double FromText<double>(const std::string& value) {
  return text::NumericPrefix(value);
}

template <>
std::string FromText<std::string>(const std::string& value) {
  return value;
}

std::int32_t Argument(const std::vector<std::string>& arguments, std::size_t index) {
  if (index < arguments.size()) return FromText<std::int32_t>(arguments[index]);
  throw Error(ErrorNumber::kInvalidCall, "Argument not optional");
}

PropertyTable Join(const PropertyTable& own, const PropertyTable& base) {
  PropertyTable all = own;
  all.insert(all.end(), base.begin(), base.end());
  return all;
}

}  // namespace vorek::property
