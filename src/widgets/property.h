#ifndef VOREK_WIDGETS_PROPERTY_H_
#define VOREK_WIDGETS_PROPERTY_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "widgets/control.h"

// Makes entries of a PropertyTable from pairs of member functions.
namespace vorek::property {

std::string ToText(bool value);
std::string ToText(std::int32_t value);
std::string ToText(double value);
std::string ToText(std::string value);

// From the text of a script: "True", "1" and "-1" are true; a number is its numeric prefix.
template <typename T>
T FromText(const std::string& text);
template <>
bool FromText<bool>(const std::string& text);
template <>
std::int32_t FromText<std::int32_t>(const std::string& text);
template <>
double FromText<double>(const std::string& text);
template <>
std::string FromText<std::string>(const std::string& text);

// The argument number `index` as a whole number. Throws Error(kInvalidCall) if it's missing.
std::int32_t Argument(const std::vector<std::string>& arguments, std::size_t index);

// A property that can only be read.
template <typename C, typename R>
PropertyEntry ReadOnly(std::string_view name, R (C::*get)() const) {
  return {name,
          [get](Control& control, const std::vector<std::string>&) {
            return ToText((static_cast<C&>(control).*get)());
          },
          nullptr};
}

// A property that can be read and assigned.
template <typename C, typename R, typename V, typename Result>
PropertyEntry ReadWrite(std::string_view name, R (C::*get)() const, Result (C::*set)(V)) {
  PropertyEntry entry = ReadOnly(name, get);
  entry.set = [set](Control& control, const std::vector<std::string>&, const std::string& text) {
    (static_cast<C&>(control).*set)(FromText<std::remove_cvref_t<V>>(text));
  };
  return entry;
}

// A control's own properties in front of those of its base.
PropertyTable Join(const PropertyTable& own, const PropertyTable& base);

}  // namespace vorek::property

#endif  // VOREK_WIDGETS_PROPERTY_H_
