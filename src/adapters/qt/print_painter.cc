#include "adapters/qt/print_painter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <cmath>

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

QRectF Scaled(const QRectF& rect, double dots) {
  return {rect.x() * dots, rect.y() * dots, rect.width() * dots, rect.height() * dots};
}

}  // namespace

PrintPainter::PrintPainter(const print::PrintDocument& document) : document_(document) {}

QRectF PrintPainter::PlaceOf(const print::DrawnItem& drawn) {
  return {drawn.left, drawn.top, drawn.item->width, drawn.item->height};
}

const QFont& PrintPainter::FontFor(const print::Item& item, double dots) {
  if (font_dots_ != dots) fonts_.clear();
  font_dots_ = dots;
  auto [place, made] = fonts_.try_emplace({item.size, item.bold});
  if (!made) return place->second;
  QFont font;
  if (!document_.Template().font.empty()) {
    font.setFamily(QString::fromStdString(document_.Template().font));
  }
  font.setPixelSize(std::max(1, qRound(item.size * kMillimetresPerPoint * dots)));
  font.setBold(item.bold);
  return place->second = font;
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
  const QFont& font = FontFor(item, dots);
  const QRectF rect = Scaled(PlaceOf(drawn), dots);
  painter.setFont(font);
  painter.setPen(ColorOf(item.color));
  painter.setLayoutDirection(DirectionOf(text));
  const bool several = rect.height() > 2.2 * font.pixelSize();
  painter.drawText(rect,
                   AlignmentOf(item.align) | Qt::AlignVCenter |
                       (several ? Qt::TextWordWrap : Qt::TextSingleLine),
                   text);
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

void WritePdf(const print::PrintDocument& document, const QString& path) {
  constexpr int kDotsPerInch = 600;
  QSaveFile file(path);
  const auto refuse = [&] {
    throw Error(ErrorNumber::kPathAccess,
                path.toStdString() + ": " + file.errorString().toStdString());
  };
  if (!file.open(QIODevice::WriteOnly)) refuse();
  {
    const print::PrintTemplate& layout = document.Template();
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
