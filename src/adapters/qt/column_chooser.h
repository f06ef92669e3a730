#ifndef VOREK_ADAPTERS_QT_COLUMN_CHOOSER_H_
#define VOREK_ADAPTERS_QT_COLUMN_CHOOSER_H_

#include <QJsonObject>

#include "adapters/qt/grid_area.h"

namespace vorek::qt {

// The menu in which the user arranges the columns of a grid: which are shown, where the current one
// stands, and which stand still. Changes show at once.
void ChooseColumns(GridArea& area, const std::function<void()>& forget_widths = {});

// What the user wished, to be kept between two runs of a program.
QJsonObject ToJson(const ColumnWishes& wishes);
// Whatever can't be read is left out.
ColumnWishes WishesFrom(const QJsonObject& kept);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_COLUMN_CHOOSER_H_
