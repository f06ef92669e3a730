#ifndef VOREK_STATE_CONFIRMED_VALUE_H_
#define VOREK_STATE_CONFIRMED_VALUE_H_

#include <string>
#include <vector>

namespace vorek {

// A value that a form of parameters was confirmed with, as a person reads it.
struct ConfirmedValue {
  std::string name;
  std::string value;
};

// "name: value، name: value"; that there is no condition where there are none.
inline std::string InWords(const std::vector<ConfirmedValue>& values) {
  std::string words;
  for (const ConfirmedValue& value : values) {
    if (!words.empty()) words += "، ";
    words += value.name + ": " + value.value;
  }
  return words.empty() ? "بدون شرط" : words;
}

}  // namespace vorek

#endif  // VOREK_STATE_CONFIRMED_VALUE_H_
