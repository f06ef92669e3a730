#include "head_bar.h"

#include <QEvent>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <algorithm>

#include "adapters/qt/control_view.h"
#include "adapters/qt/icon_buttons.h"

namespace vorek::desk {
namespace {

constexpr int kGap = 8;  // pixels

// A value of either script by itself.
QString Isolated(const QString& text) { return QChar(0x2068) + text + QChar(0x2069); }

QLabel* PlainLabel(const char* name, const QString& text, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setObjectName(name);
  label->setText(text);
  return label;
}

}  // namespace

HeadBar::HeadBar(QWidget* parent)
    : QWidget(parent),
      title_(PlainLabel("headTitle", "", this)),
      row_(new QHBoxLayout(this)),
      rest_(PlainLabel("headRest", "", this)),
      change_(new QToolButton(this)) {
  setObjectName("headBar");
  setAttribute(Qt::WA_StyledBackground);
  row_->setContentsMargins(16, 8, 16, 8);
  row_->setSpacing(kGap);
  row_->addWidget(title_);
  row_->addSpacing(kGap);
  row_->addWidget(rest_);
  row_->addWidget(change_);
  row_->addStretch();
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  change_->setObjectName("headChange");
  change_->setText("تغيير");
  change_->setAccessibleName("تغيير پارامترها");
  change_->setToolTip(vorek::qt::TipOf("تغيير پارامترها", Qt::ALT | Qt::Key_P));
  change_->setFocusPolicy(Qt::TabFocus);
  connect(change_, &QToolButton::clicked, this, [this] { on_change(); });
  TakeFont();
}

QWidget* HeadBar::MakeChip(const QString& name, const QString& value) {
  constexpr int kWidest = 240;  // pixels of a value
  auto* const chip = new QFrame(this);
  chip->setObjectName("chip");
  auto* const row = new QHBoxLayout(chip);
  row->setContentsMargins(12, 2, 12, 2);
  row->setSpacing(6);
  row->addWidget(PlainLabel("chipName", name, chip));
  QLabel* const shown = PlainLabel("chipValue", "", chip);
  shown->setText(Isolated(shown->fontMetrics().elidedText(value, Qt::ElideRight, kWidest)));
  row->addWidget(shown);
  chip->setToolTip(name + ": " + Isolated(value));
  chip->setAccessibleName(chip->toolTip());
  return chip;
}

void HeadBar::Show(const ReportHead& head, bool changes) {
  title_->setText(vorek::qt::ToQt(head.title));
  for (QWidget* const chip : chips_) delete chip;
  chips_.clear();
  words_.clear();
  constexpr int kFirst = 2;  // behind the title and its gap
  for (const ConfirmedValue& value : head.values) {
    chips_.push_back(MakeChip(vorek::qt::ToQt(value.name), vorek::qt::ToQt(value.value)));
    words_ << chips_.back()->toolTip();
    row_->insertWidget(kFirst + static_cast<int>(chips_.size()) - 1, chips_.back());
  }
  change_->setVisible(head.asked && changes);
  Fit();
}

// Larger than the other texts, whatever size they have.
void HeadBar::TakeFont() {
  QFont large = font();
  large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.35);
  large.setWeight(QFont::DemiBold);
  title_->setFont(large);
}

void HeadBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange || row_ == nullptr) return;
  TakeFont();
  Fit();
}

void HeadBar::Fit() {
  title_->ensurePolished();
  const QMargins margins = row_->contentsMargins();
  int room = width() - margins.left() - margins.right() - 2 * kGap;
  // A title is cut before it leaves no chip.
  const QString whole = title_->text();
  title_->setFixedWidth(std::min(title_->fontMetrics().horizontalAdvance(whole) + 2, room));
  room -= title_->width() + kGap;
  if (!change_->isHidden()) room -= change_->sizeHint().width() + kGap;
  rest_->setText("+" + QString::number(chips_.size()));
  const int rest = rest_->sizeHint().width() + kGap;
  std::size_t shown = 0;
  int taken = 0;
  for (; shown < chips_.size(); ++shown) {
    taken += chips_[shown]->sizeHint().width() + kGap;
    const bool last = shown + 1 == chips_.size();
    if (taken + (last ? 0 : rest) > room) break;
  }
  for (std::size_t i = 0; i < chips_.size(); ++i) chips_[i]->setVisible(i < shown);
  rest_->setVisible(shown < chips_.size());
  rest_->setText("+" + QString::number(chips_.size() - shown));
  rest_->setToolTip(words_.mid(static_cast<qsizetype>(shown)).join("\n"));
  rest_->setAccessibleName(rest_->toolTip());
  row_->activate();
}

void HeadBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Fit();
}

}  // namespace vorek::desk
