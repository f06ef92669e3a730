#include "adapters/qt/shortened.h"

#include <algorithm>

namespace vorek::qt {

bool IsFigure(const QString& text) {
  static const QString kSigns = " /.,:-+()%";
  bool digits = false;
  for (const QChar character : text) {
    if (character.isDigit()) {
      digits = true;
    } else if (!kSigns.contains(character)) {
      return false;
    }
  }
  return digits;
}

QString Shortened(const QString& text, const QFontMetricsF& metrics, double width) {
  if (metrics.horizontalAdvance(text) <= width) return text;
  if (!IsFigure(text)) return metrics.elidedText(text, Qt::ElideRight, width);
  const double sign = std::max(metrics.horizontalAdvance('#'), 1.0);
  return QString(static_cast<int>(std::max(width / sign, 0.0)), QChar('#'));
}

}  // namespace vorek::qt
