#include "adapters/qt/scale.h"

#include <QApplication>
#include <QFontInfo>
#include <QScreen>

namespace vorek::qt {
namespace {

constexpr double kTwipsPerInch = 1440;

double SystemPoints() { return QFontInfo(QApplication::font()).pointSizeF(); }

}  // namespace

Scale Scale::OfApplication() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const double dots_per_inch = screen != nullptr ? screen->logicalDotsPerInchY() : 96;
  return Scale(dots_per_inch / kTwipsPerInch * SystemPoints() / kDesignPoints);
}

QRect Scale::Pixels(std::int32_t left, std::int32_t top, std::int32_t width,
                    std::int32_t height) const {
  const QPoint first(Pixels(left), Pixels(top));
  const QPoint behind(Pixels(left + width), Pixels(top + height));
  return {first, QSize(behind.x() - first.x(), behind.y() - first.y())};
}

QFont Scale::Font(double design_points) {
  QFont font = QApplication::font();
  if (design_points > 0) font.setPointSizeF(SystemPoints() * design_points / kDesignPoints);
  return font;
}

}  // namespace vorek::qt
