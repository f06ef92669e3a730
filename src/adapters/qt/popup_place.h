#ifndef VOREK_ADAPTERS_QT_POPUP_PLACE_H_
#define VOREK_ADAPTERS_QT_POPUP_PLACE_H_

#include <QWidget>

namespace vorek::qt {

// Places a pop-up of its wanted size below a field, or above it where there is more room, right
// edge on right edge, and makes it no larger than the screen has room for.
void PlacePopup(QWidget& popup, const QWidget& field, const QSize& wanted);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_POPUP_PLACE_H_
