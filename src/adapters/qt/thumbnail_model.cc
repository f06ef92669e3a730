#include "adapters/qt/thumbnail_model.h"

namespace vorek::qt {
namespace {

constexpr int kWidth = 110;  // pixels of a small page
constexpr int kMargin = 8;
constexpr int kNumber = 18;

}  // namespace

QVariant ThumbnailModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::AccessibleTextRole) return QString("صفحه %1").arg(index.row() + 1);
  return {};
}

double ThumbnailPainter::Dots() const { return kWidth / document_->Sheet().width; }

QSize ThumbnailPainter::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {kWidth + 2 * kMargin, qRound(document_->Sheet().height * Dots()) + 2 * kMargin + kNumber};
}

void ThumbnailPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  const QRect& cell = option.rect;
  const QSize page(kWidth, qRound(document_->Sheet().height * Dots()));
  const QPoint corner(cell.x() + (cell.width() - page.width()) / 2, cell.y() + kMargin);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->fillRect(QRect(corner, page), Qt::white);
  painter->setClipRect(QRect(corner, page));
  painter->translate(corner);
  painter_.Draw(*painter, static_cast<std::size_t>(index.row()), Dots());
  painter->restore();
  painter->setPen(option.palette.color(
      option.state.testFlag(QStyle::State_Selected) ? QPalette::Highlight : QPalette::Mid));
  painter->drawRect(QRect(corner, page));
  painter->setPen(option.palette.color(QPalette::Text));
  painter->drawText(QRect(cell.x(), corner.y() + page.height(), cell.width(), kNumber),
                    Qt::AlignCenter, QString::number(index.row() + 1));
}

}  // namespace vorek::qt
