#include "adapters/qt/result_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "adapters/qt/control_view.h"

namespace vorek::qt {
namespace {

const QString kFilter = "فيلتر: ";

// Names and values of either script in the order in which a filter is read.
QString FromTheLeft(const QString& text) { return QChar(0x2066) + text + QChar(0x2069); }

}  // namespace

ResultBar::ResultBar(QWidget* parent, std::function<void()> take_filter_away)
    : QWidget(parent),
      counts_(new QLabel(this)),
      figures_(new QLabel(this)),
      filter_(new QLabel(this)),
      take_away_(new QToolButton(this)) {
  setObjectName("resultBar");
  counts_->setObjectName("resultCounts");
  figures_->setObjectName("resultFigures");
  figures_->setTextFormat(Qt::PlainText);
  figures_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  filter_->setObjectName("resultFilter");
  filter_->setTextFormat(Qt::PlainText);
  take_away_->setObjectName("resultTakeFilterAway");
  take_away_->setText("حذف فيلتر");
  take_away_->setToolTip("نمايش همه رديفها");
  take_away_->setFocusPolicy(Qt::TabFocus);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(16, 4, 16, 4);
  row->setSpacing(16);
  setAttribute(Qt::WA_StyledBackground);
  row->addWidget(counts_);
  row->addWidget(filter_);
  row->addWidget(take_away_);
  row->addStretch();
  row->addWidget(figures_);
  connect(take_away_, &QToolButton::clicked, this,
          [take = std::move(take_filter_away)] { take(); });
  // The button's room is kept, so that the grid doesn't move when a filter comes.
  QSizePolicy policy = take_away_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  take_away_->setSizePolicy(policy);
  Show({});
}

void ResultBar::Show(const ResultLine& line) {
  counts_->setText(ToQt(line.counts));
  filter_text_ = ToQt(line.filter).trimmed();
  filter_->setVisible(!filter_text_.isEmpty());
  take_away_->setVisible(!filter_text_.isEmpty());
  filter_->setToolTip(FromTheLeft(filter_text_));
  filter_->setAccessibleName(kFilter + filter_text_);
  FitFilter();
}

void ResultBar::ShowFigures(const SelectionFigures& figures) {
  QStringList parts;
  const auto add = [&parts](const char* name, const std::string& text) {
    if (!text.empty()) parts << QString(name) + ' ' + FromTheLeft(ToQt(text));
  };
  if (figures.rows > 1 || figures.numbers > 1) {
    std::string count = std::to_string(figures.numbers > 0 ? figures.numbers : figures.rows);
    add("انتخاب:", FormatMoney(count));
    add("جمع", figures.sum);
    add("ميانگين", figures.average);
    add("كمترين", figures.least);
    add("بيشترين", figures.greatest);
  }
  figures_->setText(parts.join("   "));
  FitFilter();
}

void ResultBar::FitFilter() {
  const QMargins margins = layout()->contentsMargins();
  const QFontMetrics metrics = filter_->fontMetrics();
  const int others = counts_->sizeHint().width() + figures_->sizeHint().width() +
                     take_away_->sizeHint().width() + metrics.horizontalAdvance(kFilter) +
                     margins.left() + margins.right() + 5 * layout()->spacing();
  const QString shown =
      metrics.elidedText(filter_text_, Qt::ElideRight, std::max(width() - others, 0));
  filter_->setText(kFilter + FromTheLeft(shown));
}

void ResultBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitFilter();
}

}  // namespace vorek::qt
