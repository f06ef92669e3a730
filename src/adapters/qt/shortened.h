#ifndef VOREK_ADAPTERS_QT_SHORTENED_H_
#define VOREK_ADAPTERS_QT_SHORTENED_H_

#include <QFontMetricsF>
#include <QString>

namespace vorek::qt {

// Amounts, dates, times and whatever else is read as a number.
bool IsFigure(const QString& text);

// The text as a place of that width shows it: whole where it has the room, else with dots. A figure
// that is cut would look like a smaller one: nothing of it is shown, but "####".
QString Shortened(const QString& text, const QFontMetricsF& metrics, double width);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_SHORTENED_H_
