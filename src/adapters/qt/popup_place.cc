#include "adapters/qt/popup_place.h"

#include <QScreen>
#include <algorithm>

namespace vorek::qt {

void PlacePopup(QWidget& popup, const QWidget& field, const QSize& wanted) {
  const QRect screen = field.screen()->availableGeometry();
  const QRect line(field.mapToGlobal(QPoint(0, 0)), field.size());
  const int below = screen.bottom() - line.bottom();
  const int above = line.top() - screen.top();
  const bool up = below < wanted.height() && above > below;
  const QSize size(std::min(wanted.width(), screen.width()),
                   std::clamp(up ? above : below, 1, std::min(wanted.height(), screen.height())));
  const int left =
      std::clamp(line.right() + 1 - size.width(), screen.left(), screen.right() + 1 - size.width());
  // A field that is partly off the screen itself still has its pop-up on it.
  const int top = std::clamp(up ? line.top() - size.height() : line.bottom() + 1, screen.top(),
                             screen.bottom() + 1 - size.height());
  popup.setGeometry(QRect(QPoint(left, top), size));
}

}  // namespace vorek::qt
