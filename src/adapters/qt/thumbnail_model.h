#ifndef VOREK_ADAPTERS_QT_THUMBNAIL_MODEL_H_
#define VOREK_ADAPTERS_QT_THUMBNAIL_MODEL_H_

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <memory>

#include "adapters/qt/print_painter.h"

namespace vorek::qt {

// The pages of a document as a list.
class ThumbnailModel : public QAbstractListModel {
 public:
  ThumbnailModel(std::shared_ptr<const print::Pages> document, QObject* parent)
      : QAbstractListModel(parent), document_(std::move(document)) {}

  int rowCount(const QModelIndex&) const override {
    return static_cast<int>(document_->PageCount());
  }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::shared_ptr<const print::Pages> document_;
};

// Paints a small page with its number; only those in view are ever painted.
class ThumbnailPainter : public QStyledItemDelegate {
 public:
  ThumbnailPainter(std::shared_ptr<const print::Pages> document, QObject* parent)
      : QStyledItemDelegate(parent), document_(std::move(document)), painter_(*document_) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  double Dots() const;

  std::shared_ptr<const print::Pages> document_;
  mutable PrintPainter painter_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_THUMBNAIL_MODEL_H_
