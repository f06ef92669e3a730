#ifndef VOREK_ADAPTERS_QT_PRINT_PAINTER_H_
#define VOREK_ADAPTERS_QT_PRINT_PAINTER_H_

#include <QPainter>
#include <QRectF>
#include <cstddef>
#include <map>
#include <utility>

#include "print/pages.h"

namespace vorek::qt {

// Draws pages on anything that Qt paints on. One painter serves all of them, so that its fonts and
// pictures are made once. A text without room in its place gets smaller letters; where it still has
// none it ends in dots, and a figure becomes "####": a part of one could be taken for a smaller
// one.
class PrintPainter {
 public:
  explicit PrintPainter(const print::Pages& document);

  // Draws page n, from 0, with its left upper corner where the painter's origin is. dots is a
  // millimetre's size in the painter's units.
  void Draw(QPainter& painter, std::size_t n, double dots);
  // Where on the paper an item stands, in millimetres.
  static QRectF PlaceOf(const print::DrawnItem& drawn);

 private:
  void DrawText(QPainter& painter, const print::DrawnItem& drawn, double dots);
  const QFont& FontFor(double points, bool bold, double dots);
  const QFont& FontThatFits(const print::Item& item, const QString& text, QSizeF room, double dots);
  const QImage& PictureOf(const print::Item& item);

  const print::Pages& document_;
  double font_dots_ = 0;  // that the fonts were made for
  std::map<std::pair<double, bool>, QFont> fonts_;
  std::map<const print::Item*, QImage> pictures_;
};

// Writes all pages to a PDF; the file takes its place when it is whole. Throws Error(kPathAccess)
// with the system's words.
void WritePdf(const print::Pages& document, const QString& path);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_PRINT_PAINTER_H_
