#include "adapters/qt/colors.h"

#include <algorithm>
#include <cmath>

namespace vorek::qt {
namespace {

// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

// The same hue as dark as it was light; white becomes the palette's own ground.
QColor Darkened(const QColor& color, const QColor& ground) {
  const float lowest = ground.lightnessF();
  const float lightness = lowest + (1 - lowest) * (1 - color.lightnessF());
  const float saturation = std::min(color.hslSaturationF(), 0.45F);
  return color.hslSaturationF() < 0.05F && color.lightnessF() > 0.95F
             ? ground
             : QColor::fromHslF(std::max(color.hslHueF(), 0.F), saturation,
                                std::clamp(lightness, 0.F, 1.F));
}

constexpr double kLegible = 4.5;

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

QColor Mixed(const QColor& a, const QColor& b, double part) {
  const auto mix = [part](int x, int y) { return qRound(x * (1 - part) + y * part); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor FromNumber(std::int32_t number) {
  return {number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF};
}

CellColors ColorsOf(std::int32_t back, std::int32_t fore, const QPalette& palette) {
  CellColors colors{palette.color(QPalette::Base), palette.color(QPalette::Text)};
  const bool dark = IsDark(palette);
  if (back >= 0) {
    const QColor asked = FromNumber(back);
    colors.back = dark ? Darkened(asked, colors.back) : asked;
  }
  if (fore >= 0) colors.text = FromNumber(fore);
  if (Contrast(colors.back, colors.text) < kLegible) {
    colors.text =
        Contrast(colors.back, Qt::black) > Contrast(colors.back, Qt::white) ? Qt::black : Qt::white;
  }
  return colors;
}

}  // namespace vorek::qt
