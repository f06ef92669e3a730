// Keys and values, "key TAB value" a line, put into a key list one after another: each reads back
// as the last one that was put under its key, as a plain list of pairs tells.
#include <algorithm>
#include <utility>
#include <vector>

#include "require.h"
#include "text/key_list.h"
#include "text/utf8.h"

namespace {

using namespace vorek;

// What the list can hold: nothing in it is escaped.
bool IsKey(std::string_view key) { return key.find_first_of("&=") == std::string_view::npos; }
bool IsValue(std::string_view value) { return value.find('&') == std::string_view::npos; }

using Pairs = std::vector<std::pair<std::string, std::string>>;

auto Find(Pairs& pairs, std::string_view key) {
  return std::find_if(pairs.begin(), pairs.end(),
                      [&](const auto& pair) { return text::EqualsIgnoreCase(pair.first, key); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = TextOf(data, size);
  Pairs pairs;
  std::string list;
  while (!rest.empty()) {
    std::string_view value = TakeUpTo(rest, '\n');
    const std::string_view key = TakeUpTo(value, '\t');
    if (!IsKey(key) || !IsValue(value)) {
      std::string other = list;
      setParameterValue(other, key, value);
      getParameterValue(other, key);
      continue;
    }
    const auto found = Find(pairs, key);
    const bool known = found != pairs.end();
    Require(setParameterValue(list, key, value) == known, "known or not: " + list);
    known ? void(found->second = value) : void(pairs.emplace_back(key, value));
  }
  for (const auto& [key, value] : pairs) {
    Require(getParameterValue(list, key) == value, "another value of " + key + ": " + list);
  }
  return 0;
}
