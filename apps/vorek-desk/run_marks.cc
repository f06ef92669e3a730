#include "run_marks.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolButton>

#include "adapters/qt/busy_panel.h"
#include "adapters/qt/icon_buttons.h"
#include "adapters/qt/theme.h"

namespace vorek::desk {
namespace {

constexpr const char* kRuns = "runs";  // of a tab

QIcon Dot(const QColor& color) {
  constexpr int kSize = 32;
  QPixmap dot(kSize, kSize);
  dot.fill(Qt::transparent);
  QPainter painter(&dot);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(QRectF(kSize / 4.0, kSize / 4.0, kSize / 2.0, kSize / 2.0));
  return dot;
}

}  // namespace

RunMarks::RunMarks(QTabWidget& tabs, QStatusBar& line, qint64 long_run)
    : tabs_(tabs), long_run_(long_run), line_(new QLabel(&line)), notice_(new QToolButton(&line)) {
  line_->setObjectName("runLine");
  line_->setContentsMargins(8, 0, 8, 0);
  notice_->setObjectName("runNotice");
  notice_->setFocusPolicy(Qt::TabFocus);
  notice_->setToolTip(vorek::qt::TipOf("نمايش گزارش", Qt::CTRL | Qt::Key_J));
  connect(notice_, &QToolButton::clicked, this, [this] { Follow(); });
  line.addWidget(notice_);
  line.addWidget(line_);
  notice_->hide();
}

void RunMarks::Mark(QWidget& tab, const QString& text, const QColor& color) {
  const int index = tabs_.indexOf(&tab);
  if (index < 0) return;
  tabs_.setTabText(index, text);
  tabs_.setTabIcon(index, color.isValid() ? Dot(color) : QIcon());
}

void RunMarks::GoesOn(QWidget& tab, const QString& title, const QString& words,
                      const QString& time) {
  const QString text = title + " · " + time;
  const int index = tabs_.indexOf(&tab);
  tab.setProperty(kRuns, true);
  // Not oftener than it changes: a tab of another width moves its neighbours.
  if (index >= 0 && tabs_.tabText(index) != text) {
    Mark(tab, text, vorek::qt::ThemeOf(tabs_.palette()).accent);
  }
  if (&tab == tabs_.currentWidget()) line_->setText(words);
}

void RunMarks::Ended(QWidget& tab, const QString& title, qint64 milliseconds) {
  tab.setProperty(kRuns, false);
  const bool seen = &tab == tabs_.currentWidget() && tabs_.window()->isActiveWindow();
  const bool notes = !seen && milliseconds >= long_run_;
  Mark(tab, title, notes ? vorek::qt::ThemeOf(tabs_.palette()).star : QColor());
  if (&tab == tabs_.currentWidget()) line_->clear();
  if (!notes) return;
  QApplication::alert(&tab);
  if (&tab == tabs_.currentWidget()) return;
  Notice(tab, "گزارش «" + title + "» پس از " + vorek::qt::TimeInWords(milliseconds) + " آماده شد");
}

void RunMarks::Notice(QWidget& tab, const QString& text) {
  ended_ = &tab;
  notice_->setText(text);
  notice_->setAccessibleName(text);
  notice_->show();
  QAccessibleEvent alert(notice_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void RunMarks::Shown() {
  line_->clear();
  QWidget* const tab = tabs_.currentWidget();
  if (tab == nullptr) return;
  if (!tab->property(kRuns).toBool()) tabs_.setTabIcon(tabs_.currentIndex(), QIcon());
  if (tab != ended_ && !ended_.isNull()) return;
  ended_.clear();
  notice_->hide();
}

void RunMarks::Follow() {
  if (!ended_.isNull() && tabs_.indexOf(ended_) >= 0) tabs_.setCurrentWidget(ended_);
  Shown();
}

}  // namespace vorek::desk
