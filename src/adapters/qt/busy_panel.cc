#include "adapters/qt/busy_panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "text/cell_text.h"

namespace vorek::qt {
namespace {

const QString kRunning = "در حال اجراي گزارش";
const QString kAnswered = "پاسخ رسيد؛ در نوبت نمايش";

QString RowsRead(std::size_t rows) {
  return QString::fromStdString(GroupDigits(static_cast<FixedPoint>(rows))) + " سطر خوانده شد";
}

}  // namespace

QString TimeInWords(qint64 milliseconds) {
  const qint64 seconds = milliseconds / 1000;
  const auto two = [](qint64 value) { return QString("%1").arg(value, 2, 10, QChar('0')); };
  const qint64 hours = seconds / 3600;
  const QString minutes = QString::number(seconds / 60 % 60);
  return hours == 0 ? minutes + ":" + two(seconds % 60)
                    : QString("%1:%2:%3").arg(hours).arg(two(seconds / 60 % 60), two(seconds % 60));
}

QString ProgressInWords(const RunProgress& progress) {
  QStringList parts{progress.answered ? kAnswered : kRunning, TimeInWords(progress.milliseconds)};
  if (progress.rows > 0) parts << RowsRead(progress.rows);
  return parts.join(" · ");
}

BusyPanel::BusyPanel(QWidget* over, std::function<void()> cancel) : QFrame(over) {
  setObjectName("busyPanel");
  setLayoutDirection(Qt::RightToLeft);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  auto* const grid = new QGridLayout(this);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  grid->setHorizontalSpacing(24);
  text_ = AddLabel("busyText", kAnswered, 0, 0);
  time_ = AddLabel("busyTime", "0:00:00", 0, 1);
  rows_ = AddLabel("busyRows", RowsRead(99'999'999), 1, 0);
  auto* const button = new QPushButton("انصراف", this);
  button->setObjectName("busyCancel");
  connect(button, &QPushButton::clicked, this, [cancel = std::move(cancel)] { cancel(); });
  grid->addWidget(button, 1, 1);
  show();
  raise();
}

QLabel* BusyPanel::AddLabel(const QString& name, const QString& longest, int row, int column) {
  auto* const label = new QLabel(this);
  label->setObjectName(name);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(longest));
  static_cast<QGridLayout*>(layout())->addWidget(label, row, column);
  return label;
}

void BusyPanel::Tell(const RunProgress& progress) {
  text_->setText(progress.answered ? kAnswered : kRunning);
  time_->setText(TimeInWords(progress.milliseconds));
  if (progress.rows > 0) rows_->setText(RowsRead(progress.rows));
  adjustSize();
  move(parentWidget()->rect().center() - rect().center());
}

}  // namespace vorek::qt
