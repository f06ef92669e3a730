#ifndef VOREK_FUZZ_REQUIRE_H_
#define VOREK_FUZZ_REQUIRE_H_

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vorek {

// What a target holds its subject against: the run ends here, and the input is kept.
inline void Require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// The text up to `end`, which is taken off with it.
inline std::string_view TakeUpTo(std::string_view& text, char end) {
  const std::size_t at = text.find(end);
  const std::string_view piece = text.substr(0, at);
  text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
  return piece;
}

}  // namespace vorek

#endif  // VOREK_FUZZ_REQUIRE_H_
