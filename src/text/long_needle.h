#ifndef VOREK_TEXT_LONG_NEEDLE_H_
#define VOREK_TEXT_LONG_NEEDLE_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace vorek::text {

// A text to look for without regard to case, in a time that grows with both lengths and not with
// their product: how far a part of it is found again within itself is known beforehand.
class LongNeedle {
 public:
  // REQUIRES: needle isn't empty.
  explicit LongNeedle(std::string_view needle);

  struct Hit {
    std::size_t at;  // std::string_view::npos for none
    std::size_t length;
  };
  // The first hit at or behind byte `from`, in bytes.
  Hit In(std::string_view s, std::size_t from) const;

 private:
  std::vector<char32_t> letters_;
  std::vector<std::size_t> kept_;  // of so many letters that fit, how many if the next one doesn't
  bool never_ = false;
};

}  // namespace vorek::text

#endif  // VOREK_TEXT_LONG_NEEDLE_H_
