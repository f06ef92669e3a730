#ifndef VOREK_ADAPTERS_QT_ICONS_H_
#define VOREK_ADAPTERS_QT_ICONS_H_

#include <QColor>
#include <QIcon>
#include <QString>

namespace vorek::qt {

// One family of line icons, drawn on a square of 24 units with lines of 1.6. Names: "run",
// "parameters", "find", "filter", "sum", "chart", "bars", "stacked", "lines", "shares", "turn",
// "save", "vector", "workbook", "export", "print", "back", "menu", "close", "next", "previous",
// "columns", "star", "star-on", "copy", "help", "refresh", "down". An icon in the colour, its
// disabled form in the other one. Empty for an unknown name.
QIcon IconOf(const QString& name, const QColor& color, const QColor& disabled);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_ICONS_H_
