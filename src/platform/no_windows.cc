#include "vorek/no_windows.h"

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {

std::int32_t NoWindows::TextWidth(std::string_view text, double size) const {
  // A digit of an 8.25-point sans serif is about 96 twips wide.
  constexpr double kPitch = 96 / 8.25;
  const double columns = static_cast<double>(text::DisplayWidth(text));
  return text::ToInt32(columns * kPitch * (size > 0 ? size : 8.25));
}

}  // namespace vorek
