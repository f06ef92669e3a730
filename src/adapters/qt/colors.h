#ifndef VOREK_ADAPTERS_QT_COLORS_H_
#define VOREK_ADAPTERS_QT_COLORS_H_

#include <QColor>
#include <QPalette>
#include <cstdint>

namespace vorek::qt {

bool IsDark(const QPalette& palette);

// How far two colours stand apart, from 1 to 21 (contrast ratio of the Web Content Accessibility
// Guidelines 2.1).
double Contrast(const QColor& a, const QColor& b);
// A colour between a, at part 0, and b, at part 1.
QColor Mixed(const QColor& a, const QColor& b, double part);

// A number that counts blue, green, red from the high byte down.
QColor FromNumber(std::int32_t number);

// The colours of a cell in a palette: those that were asked for, -1 for the palette's own. In a
// dark palette a light colour becomes a dark one of the same hue, and the text is always legible
// on its ground.
struct CellColors {
  QColor back;
  QColor text;
};
CellColors ColorsOf(std::int32_t back, std::int32_t fore, const QPalette& palette);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_COLORS_H_
