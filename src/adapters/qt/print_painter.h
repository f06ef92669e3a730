#ifndef VOREK_ADAPTERS_QT_PRINT_PAINTER_H_
#define VOREK_ADAPTERS_QT_PRINT_PAINTER_H_

#include <QPainter>
#include <QRectF>
#include <cstddef>

#include "print/print_document.h"

namespace vorek::qt {

// Draws the pages of a document on anything that Qt paints on. One painter serves all pages of a
// document, so that its fonts and pictures are made once.
class PrintPainter {
 public:
  explicit PrintPainter(const print::PrintDocument& document);

  // Draws page n, from 0, with its left upper corner where the painter's origin is. dots is a
  // millimetre's size in the painter's units.
  void Draw(QPainter& painter, std::size_t n, double dots);
  // Where on the paper an item stands, in millimetres.
  static QRectF PlaceOf(const print::DrawnItem& drawn);

 private:
  void DrawText(QPainter& painter, const print::DrawnItem& drawn, double dots);
  const QFont& FontFor(const print::Item& item, double dots);
  const QImage& PictureOf(const print::Item& item);

  const print::PrintDocument& document_;
  double font_dots_ = 0;  // that the fonts were made for
  std::map<std::pair<double, bool>, QFont> fonts_;
  std::map<const print::Item*, QImage> pictures_;
};

// Writes all pages to a PDF; the file takes its place when it is whole. Throws Error(kPathAccess)
// with the system's words.
void WritePdf(const print::PrintDocument& document, const QString& path);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_PRINT_PAINTER_H_
