#include "adapters/qt/column_chooser.h"

#include <QJsonArray>
#include <QMenu>
#include <functional>

#include "adapters/qt/control_view.h"

namespace vorek::qt {
namespace {

class Chooser {
 public:
  Chooser(GridArea& area, const std::function<void()>& forget_widths)
      : area_(area), view_(area.Geometry().Arrangement()) {
    menu_.setObjectName("columnChooser");
    menu_.setLayoutDirection(Qt::RightToLeft);
    AddColumns();
    menu_.addSeparator();
    AddPlaces();
    menu_.addSeparator();
    Add("همه به شكل نخست", [this] {
      view_.SetWishes({});
    })->setEnabled(view_.Wishes() != ColumnWishes());
    Add("پهناي ستونها به شكل نخست (اجراي دوباره)", forget_widths)
        ->setEnabled(forget_widths != nullptr);
  }

  void Run() {
    menu_.exec(area_.viewport()->mapToGlobal(QPoint(0, area_.Geometry().HeaderPixels())));
  }

 private:
  QAction* Add(const QString& text, const std::function<void()>& change) {
    QAction* const entry = menu_.addAction(text);
    QObject::connect(entry, &QAction::triggered, &menu_, [this, change] {
      change();
      area_.LayoutChanged();
    });
    return entry;
  }

  // Those without a width were hidden by the report's author.
  void AddColumns() {
    const Grid& grid = *area_.Shown();
    for (std::int32_t col = grid.FixedCols(); col < grid.Cols(); ++col) {
      if (grid.ColWidth(col) == 0) continue;
      const bool shown = !view_.IsHidden(col);
      QAction* const entry = Add(ToQt(grid.TextMatrix(0, col)),
                                 [this, col, shown] { shown ? view_.Hide(col) : view_.Show(col); });
      entry->setCheckable(true);
      entry->setChecked(shown);
    }
  }

  void AddPlaces() {
    const std::int32_t col = area_.Shown()->Col();
    const QString name = ToQt(area_.Shown()->TextMatrix(0, col));
    Add(QString("«%1» يك ستون به راست").arg(name), [this, col] { view_.Move(col, -1); });
    Add(QString("«%1» يك ستون به چپ").arg(name), [this, col] { view_.Move(col, 1); });
    Add(QString("ثابت تا «%1»").arg(name), [this, col] { view_.FreezeTo(col); });
    Add("بدون ستون ثابت", [this] { view_.FreezeTo(-1); })->setEnabled(view_.Frozen() > 0);
  }

  GridArea& area_;
  ColumnView& view_;
  QMenu menu_;
};

}  // namespace

void ChooseColumns(GridArea& area, const std::function<void()>& forget_widths) {
  if (area.Shown() == nullptr || area.Shown()->Rows() == 0) return;
  Chooser(area, forget_widths).Run();
}

QJsonObject ToJson(const ColumnWishes& wishes) {
  QJsonArray order;
  for (const NamedColumn& wish : wishes.order) {
    order << QJsonObject{
        {"column", wish.col}, {"header", ToQt(wish.header)}, {"hidden", wish.hidden}};
  }
  return {{"order", order}, {"frozen", wishes.frozen}};
}

ColumnWishes WishesFrom(const QJsonObject& kept) {
  ColumnWishes wishes;
  wishes.frozen = kept["frozen"].toInt();
  for (const QJsonValue entry : kept["order"].toArray()) {
    wishes.order.push_back({entry["column"].toInt(-1), entry["header"].toString().toStdString(),
                            entry["hidden"].toBool()});
  }
  return wishes;
}

}  // namespace vorek::qt
