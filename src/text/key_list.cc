#include "text/key_list.h"

#include <algorithm>

#include "text/utf8.h"

namespace vorek {
namespace {

// Behind the key and its "=": as many letters, which may take other bytes in the other case.
std::size_t BehindKey(std::string_view list, std::size_t begin, std::string_view key) {
  return begin + text::ByteOffset(list.substr(begin), text::Length(key) + 1);
}

// Where the value of the key begins; npos if the key isn't there. A key counts behind "&" anywhere
// or at the list's very start.
std::size_t ValueBegin(std::string_view list, std::string_view key) {
  const std::string assigned = std::string(key) + "=";
  const std::size_t inner = text::FindIgnoreCase(list, "&" + assigned);
  if (inner != std::string_view::npos) return BehindKey(list, inner + 1, key);
  const bool first = text::StartsWithIgnoreCase(list, assigned);
  return first ? BehindKey(list, 0, key) : std::string_view::npos;
}

}  // namespace

std::string getParameterValue(std::string_view list, std::string_view key) {
  const std::size_t begin = ValueBegin(list, key);
  if (begin == std::string_view::npos) return {};
  return std::string(list.substr(begin, list.find('&', begin) - begin));
}

bool setParameterValue(std::string& list, std::string_view key, std::string_view value) {
  const std::size_t begin = ValueBegin(list, key);
  if (begin == std::string_view::npos) {
    if (!list.empty()) list += '&';
    list.append(key).append("=").append(value);
    return false;
  }
  const std::size_t end = std::min(list.find('&', begin), list.size());
  list.replace(begin, end - begin, value);
  return true;
}

}  // namespace vorek
