#include "print/paper_color.h"

#include <algorithm>
#include <cmath>

namespace vorek::print {
namespace {

constexpr std::int32_t kWhite = 0xFFFFFF;
constexpr std::int32_t kBlack = 0;

// Blue, green, red as red, green, blue.
std::int32_t Turned(std::int32_t number) {
  return (number & 0xFF) << 16 | (number & 0xFF00) | (number >> 16 & 0xFF);
}

double Linear(std::int32_t part) {
  const double share = part / 255.0;
  return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(std::int32_t rgb) {
  return 0.2126 * Linear(rgb >> 16 & 0xFF) + 0.7152 * Linear(rgb >> 8 & 0xFF) +
         0.0722 * Linear(rgb & 0xFF);
}

double Contrast(std::int32_t a, std::int32_t b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

}  // namespace

PaperColors ColorsOnPaper(std::int32_t back, std::int32_t fore) {
  constexpr double kLegible = 4.5;
  const std::int32_t ground = back >= 0 ? Turned(back) : kWhite;
  PaperColors colors{ground == kWhite ? -1 : ground, fore >= 0 ? Turned(fore) : kBlack};
  if (Contrast(ground, colors.text) < kLegible) {
    colors.text = Contrast(ground, kBlack) >= Contrast(ground, kWhite) ? kBlack : kWhite;
  }
  return colors;
}

}  // namespace vorek::print
