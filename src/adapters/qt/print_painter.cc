#include "adapters/qt/print_painter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <cmath>

#include "adapters/qt/shortened.h"
#include "vorek/error.h"

namespace vorek::qt {
namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;

QColor ColorOf(std::int32_t rgb) { return QColor::fromRgb(QRgb(rgb) | 0xFF000000U); }

bool IsRightToLeft(QChar c) {
  return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
}

// A text without a letter of ours runs from the left, as numbers and brackets do.
Qt::LayoutDirection DirectionOf(const QString& text) {
  return std::any_of(text.begin(), text.end(), IsRightToLeft) ? Qt::RightToLeft : Qt::LeftToRight;
}

int AlignmentOf(print::Align align) {
  switch (align) {
    case print::Align::kCentre:
      return Qt::AlignHCenter;
    case print::Align::kLeft:
      return Qt::AlignLeft | Qt::AlignAbsolute;
    case print::Align::kRight:
      break;
  }
  return Qt::AlignRight | Qt::AlignAbsolute;
}

// A text with room for two lines in its own letters runs on; a figure never does.
bool RunsOn(const print::Item& item, const QString& text) {
  return item.height > 2.2 * item.size * kMillimetresPerPoint && !IsFigure(text);
}

bool Fits(const QFont& font, const QString& text, QSizeF room, bool runs_on) {
  const QFontMetricsF metrics(font);
  if (!runs_on) return metrics.horizontalAdvance(text) <= room.width();
  const QRectF taken = metrics.boundingRect(QRectF(QPointF(), room), Qt::TextWordWrap, text);
  return taken.height() <= room.height() && taken.width() <= room.width();
}

QRectF Scaled(const QRectF& rect, double dots) {
  return {rect.x() * dots, rect.y() * dots, rect.width() * dots, rect.height() * dots};
}

}  // namespace

PrintPainter::PrintPainter(const print::Pages& document) : document_(document) {}

QRectF PrintPainter::PlaceOf(const print::DrawnItem& drawn) {
  return {drawn.left, drawn.top, drawn.item->width, drawn.item->height};
}

const QFont& PrintPainter::FontFor(double points, bool bold, double dots) {
  if (font_dots_ != dots) fonts_.clear();
  font_dots_ = dots;
  auto [place, made] = fonts_.try_emplace({points, bold});
  if (!made) return place->second;
  QFont font;
  if (!document_.Sheet().font.empty()) {
    font.setFamily(QString::fromStdString(document_.Sheet().font));
  }
  font.setPixelSize(std::max(1, qRound(points * kMillimetresPerPoint * dots)));
  font.setBold(bold);
  return place->second = font;
}

const QFont& PrintPainter::FontThatFits(const print::Item& item, const QString& text, QSizeF room,
                                        double dots) {
  const bool runs_on = RunsOn(item, text);
  const QFont& own = FontFor(item.size, item.bold, dots);
  if (Fits(own, text, room, runs_on)) return own;
  for (const double part : {0.9, 0.8, 0.7}) {
    const QFont& smaller = FontFor(item.size * part, item.bold, dots);
    if (Fits(smaller, text, room, runs_on)) return smaller;
  }
  return FontFor(item.size * 0.6, item.bold, dots);
}

const QImage& PrintPainter::PictureOf(const print::Item& item) {
  auto [place, made] = pictures_.try_emplace(&item);
  if (made) {
    place->second = QImage::fromData(reinterpret_cast<const uchar*>(item.text.data()),
                                     static_cast<int>(item.text.size()));
  }
  return place->second;
}

void PrintPainter::DrawText(QPainter& painter, const print::DrawnItem& drawn, double dots) {
  const QString text = QString::fromStdString(drawn.text);
  if (text.isEmpty()) return;
  const print::Item& item = *drawn.item;
  const QRectF rect = Scaled(PlaceOf(drawn), dots);
  const QFont& font = FontThatFits(item, text, rect.size(), dots);
  painter.setFont(font);
  painter.setPen(ColorOf(item.color));
  painter.setLayoutDirection(DirectionOf(text));
  const bool several = RunsOn(item, text);
  painter.drawText(rect,
                   AlignmentOf(item.align) | Qt::AlignVCenter |
                       (several ? Qt::TextWordWrap : Qt::TextSingleLine),
                   several ? text : Shortened(text, QFontMetricsF(font), rect.width()));
}

void PrintPainter::Draw(QPainter& painter, std::size_t n, double dots) {
  for (const print::DrawnItem& drawn : document_.Page(n)) {
    const print::Item& item = *drawn.item;
    const QRectF rect = Scaled(PlaceOf(drawn), dots);
    const QPen pen(ColorOf(item.color), item.thickness * dots);
    switch (item.kind) {
      case print::ItemKind::kText:
      case print::ItemKind::kSum:
        DrawText(painter, drawn, dots);
        break;
      case print::ItemKind::kLine:
        painter.setPen(pen);
        painter.drawLine(rect.topLeft(), rect.bottomRight());
        break;
      case print::ItemKind::kBox:
        painter.setPen(item.thickness > 0 ? pen : QPen(Qt::NoPen));
        painter.setBrush(item.fill >= 0 ? QBrush(ColorOf(item.fill)) : QBrush(Qt::NoBrush));
        painter.drawRect(rect);
        break;
      case print::ItemKind::kPicture:
        painter.drawImage(rect, PictureOf(item));
        break;
    }
  }
}

void WritePdf(const print::Pages& document, const QString& path) {
  constexpr int kDotsPerInch = 600;
  QSaveFile file(path);
  const auto refuse = [&] {
    throw Error(ErrorNumber::kPathAccess,
                path.toStdString() + ": " + file.errorString().toStdString());
  };
  if (!file.open(QIODevice::WriteOnly)) refuse();
  {
    const print::Paper& layout = document.Sheet();
    QPdfWriter pdf(&file);
    pdf.setResolution(kDotsPerInch);
    pdf.setPageSize(QPageSize(QSizeF(layout.width, layout.height), QPageSize::Millimeter));
    pdf.setPageMargins(QMarginsF());
    pdf.setTitle(QString::fromStdString(layout.title));
    QPainter painter(&pdf);
    PrintPainter pages(document);
    for (std::size_t page = 0; page < document.PageCount(); ++page) {
      if (page > 0) pdf.newPage();
      pages.Draw(painter, page, kDotsPerInch / 25.4);
    }
  }
  if (!file.commit()) refuse();
}

}  // namespace vorek::qt
