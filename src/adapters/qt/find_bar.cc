#include "adapters/qt/find_bar.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <utility>

#include "adapters/qt/control_view.h"
#include "text/cell_text.h"

namespace vorek::qt {
namespace {

QString Grouped(std::size_t number) {
  std::string text = std::to_string(number);
  return ToQt(FormatMoney(text));
}

}  // namespace

FindBar::FindBar(QWidget* parent, std::function<GridArea*()> area)
    : QFrame(parent), area_(std::move(area)), text_(new QLineEdit(this)), count_(new QLabel(this)) {
  setObjectName("findBar");
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  text_->setObjectName("findText");
  text_->setPlaceholderText("جستجو در همه ستونها");
  text_->setAccessibleName("جستجو در همه ستونها");
  text_->installEventFilter(this);
  count_->setObjectName("findCount");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 6, 8, 6);
  row->setSpacing(8);
  row->addWidget(text_);
  row->addWidget(count_);
  AddButton("previous", "قبلي", Qt::SHIFT | Qt::Key_Return, [this] { Step(false); });
  AddButton("next", "بعدي", Qt::Key_Return, [this] { Step(true); });
  AddButton("close", "بستن", Qt::Key_Escape, [this] { Close(); });
  connect(text_, &QLineEdit::textChanged, this, [this] { Begin(); });
  slice_.setSingleShot(true);
  connect(&slice_, &QTimer::timeout, this, [this] { Look(); });
  buttons_.Recolor(palette());
  hide();
}

// The keys are the text's.
template <typename Work>
void FindBar::AddButton(const char* icon, const QString& text, const QKeySequence& key,
                        const Work& work) {
  connect(buttons_.Add(*static_cast<QHBoxLayout*>(layout()), icon, text, key),
          &QToolButton::clicked, this, work);
}

void FindBar::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) buttons_.Recolor(palette());
}

void FindBar::Open() {
  if (area_() == nullptr) return;
  if (!isVisible()) {
    show();
    Begin();
  }
  Place();
  raise();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

// Over the grid's data, at the side where its columns end.
void FindBar::Place() {
  constexpr int kGap = 8;  // pixels
  GridArea* const area = area_();
  if (area == nullptr) return;
  adjustSize();
  const QPoint corner = area->viewport()->mapTo(parentWidget(), QPoint(0, 0));
  move(corner.x() + kGap, corner.y() + area->Geometry().HeaderPixels() + kGap);
}

void FindBar::Close() {
  hide();
  slice_.stop();
  finder_.reset();
  if (marked_ != nullptr) std::exchange(marked_, nullptr)->MarkFound(nullptr);
  if (GridArea* const area = area_(); area != nullptr) area->setFocus();
}

void FindBar::RowsChanged() {
  if (isVisible()) Begin();
}

void FindBar::Begin() {
  GridArea* const area = area_();
  if (marked_ != nullptr) std::exchange(marked_, nullptr)->MarkFound(nullptr);
  finder_.reset();
  wanted_.reset();
  done_ = false;
  const std::string text = text_->text().toStdString();
  if (area != nullptr && area->Shown() != nullptr && GridFinder::CanFind(text)) {
    finder_ = std::make_unique<GridFinder>(*area->Shown(), text);
    marked_ = area;
    area->MarkFound(finder_.get());
    slice_.start(0);
  }
  Tell();
}

void FindBar::Look() {
  constexpr int kSlice = 12;   // milliseconds: a frame of the screen is 16
  constexpr int kRows = 1024;  // between two looks at the clock
  constexpr int kAgain = 50;   // milliseconds
  if (finder_ == nullptr || marked_->Shown() == nullptr) return;
  if (!marked_->Shown()->Drawn()) {
    slice_.start(kAgain);
    return;
  }
  QElapsedTimer clock;
  clock.start();
  while (!done_ && clock.elapsed() < kSlice) done_ = finder_->Step(kRows);
  if (!done_) slice_.start(0);
  if (wanted_) Step(*wanted_);
  Tell();
}

// From the current cell on.
void FindBar::Step(bool forward) {
  wanted_.reset();
  if (finder_ == nullptr || marked_ == nullptr || marked_->Shown() == nullptr) return;
  const Grid& grid = *marked_->Shown();
  // A row that is selected whole is stepped into.
  const std::int32_t col = grid.Col() == grid.ColSel() ? grid.Col() : forward ? -1 : grid.Cols();
  const GridFinder::Hit from{grid.Row(), col};
  const auto hit = finder_->NextFrom(from, forward);
  if (!done_ && (!hit || !IsRead(finder_->Hits()[*hit], from, forward))) {
    wanted_ = forward;
    return;
  }
  if (!hit) return;
  const GridFinder::Hit& cell = finder_->Hits()[*hit];
  marked_->GoTo(cell.row, cell.col);
  Tell();
}

// Nothing that hasn't been looked through yet can come before the hit.
bool FindBar::IsRead(const GridFinder::Hit& hit, const GridFinder::Hit& from, bool forward) const {
  return forward ? hit > from : hit < from && finder_->NextRow() > from.row;
}

void FindBar::Tell() {
  QString text;
  if (finder_ != nullptr) {
    const std::vector<GridFinder::Hit>& hits = finder_->Hits();
    const Grid& grid = *marked_->Shown();
    const auto at =
        std::lower_bound(hits.begin(), hits.end(), GridFinder::Hit{grid.Row(), grid.Col()});
    const bool on = at != hits.end() && at->row == grid.Row() && at->col == grid.Col() &&
                    grid.Col() == grid.ColSel();
    text = done_ && hits.empty() ? QString("پيدا نشد") : Grouped(hits.size());
    if (on) text = Grouped(static_cast<std::size_t>(at - hits.begin()) + 1) + " از " + text;
    if (!done_ || hits.size() >= GridFinder::kMostHits) text += "+";
  }
  count_->setText(text);
  Place();
}

bool FindBar::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(object, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (key.key() == Qt::Key_Escape) {
    Close();
  } else if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
    Step(!key.modifiers().testFlag(Qt::ShiftModifier));
  } else if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Up) {
    Step(key.key() == Qt::Key_Down);
  } else {
    return false;
  }
  return true;
}

}  // namespace vorek::qt
