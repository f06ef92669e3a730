#include "desk_toolbar.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QToolButton>

namespace vorek::desk {

DeskToolbar::DeskToolbar(QWidget* parent)
    : QWidget(parent), program_(new QMenu(this)), who_(new QLabel(this)) {
  setObjectName("deskToolbar");
  setAttribute(Qt::WA_StyledBackground);
  who_->setObjectName("user");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(12, 6, 12, 6);
  row->setSpacing(4);
  Add(*row, ReportAction::kRun, "run", "اجرا", {}, true);
  Add(*row, ReportAction::kParameters, "parameters", "پارامترها", Qt::ALT | Qt::Key_P, true);
  AddGap(*row);
  Add(*row, ReportAction::kFind, "find", "جستجو در همه ستونها", QKeySequence::Find, false);
  Add(*row, ReportAction::kFilter, "filter", "فيلتر ستون جاري", Qt::ALT | Qt::Key_F, false);
  Add(*row, ReportAction::kSum, "sum", "جمع ستون جاري", Qt::ALT | Qt::Key_S, false);
  Add(*row, ReportAction::kColumns, "columns", "ستونها", Qt::ALT | Qt::Key_C, false);
  Add(*row, ReportAction::kChart, "chart", "نمودار", Qt::ALT | Qt::Key_N, true);
  AddGap(*row);
  AddExports(*row);
  Add(*row, ReportAction::kPrint, "print", "چاپ", QKeySequence::Print, true);
  row->addStretch();
  row->addWidget(who_);
  AddProgram(*row);
  buttons_.Recolor(palette());
}

QToolButton* DeskToolbar::AddButton(QHBoxLayout& row, const QString& icon, const QString& text,
                                    const QKeySequence& key, bool words) {
  QToolButton* const button = buttons_.Add(row, icon, text, key);
  if (words) button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  return button;
}

void DeskToolbar::Add(QHBoxLayout& row, ReportAction action, const QString& icon,
                      const QString& text, const QKeySequence& key, bool words) {
  QToolButton* const button = AddButton(row, icon, text, key, words);
  if (action == ReportAction::kRun) {
    buttons_.SetOnAccent(*button);
    // The key is the grid's own.
    button->setToolTip(vorek::qt::TipOf(text, Qt::Key_F5));
  }
  auto* const trigger = new QAction(text, this);
  trigger->setShortcut(key);
  trigger->setShortcutContext(Qt::WindowShortcut);
  window()->addAction(trigger);
  connect(trigger, &QAction::triggered, this, [this, action] { on_action(action); });
  connect(button, &QToolButton::clicked, trigger, &QAction::trigger);
  connect(trigger, &QAction::enabledChanged, button, &QToolButton::setEnabled);
  entries_.push_back({action, trigger, button});
}

void DeskToolbar::AddExports(QHBoxLayout& row) {
  QToolButton* const button = AddButton(row, "export", "خروجي", Qt::ALT | Qt::Key_E, true);
  button->setShortcut(Qt::ALT | Qt::Key_E);
  button->setPopupMode(QToolButton::InstantPopup);
  auto* const menu = new QMenu(button);
  button->setMenu(menu);
  const std::pair<ReportAction, const char*> exports[] = {
      {ReportAction::kWorkbook, "كارپوشه اكسل..."},
      {ReportAction::kQuickWorkbook, "انتقال سريع به اكسل"},
      {ReportAction::kText, "فايل متني..."},
      {ReportAction::kAccess, "فايل اكسس..."},
      {ReportAction::kCopyWithHeaders, "كپي انتخاب با سرستونها"},
      {ReportAction::kCopyPlain, "كپي انتخاب با عددهاي ساده"}};
  for (const auto& [action, text] : exports) {
    QAction* const entry = menu->addAction(text);
    connect(entry, &QAction::triggered, this, [this, action = action] { on_action(action); });
    entries_.push_back({action, entry, nullptr});
  }
}

void DeskToolbar::AddProgram(QHBoxLayout& row) {
  QToolButton* const button = AddButton(row, "menu", "برنامه", Qt::ALT | Qt::Key_M, false);
  button->setObjectName("program");
  button->setPopupMode(QToolButton::InstantPopup);
  button->setMenu(program_);
  button->setShortcut(Qt::ALT | Qt::Key_M);
}

void DeskToolbar::AddGap(QHBoxLayout& row) {
  auto* const gap = new QFrame(this);
  gap->setObjectName("gap");
  row.addWidget(gap);
}

void DeskToolbar::Offer(const std::function<bool(ReportAction)>& has) {
  for (const Entry& entry : entries_) entry.trigger->setEnabled(has(entry.action));
}

void DeskToolbar::Recommend(ReportAction action, bool on) {
  for (const Entry& entry : entries_) {
    if (entry.action != action || entry.button == nullptr) continue;
    entry.button->setProperty("recommended", on);
    entry.button->style()->polish(entry.button);
  }
}

void DeskToolbar::TellWho(const QString& text) { who_->setText(text); }

void DeskToolbar::ShowRunning(bool running) {
  for (const Entry& entry : entries_) {
    if (entry.action != ReportAction::kRun) continue;
    const QString text = running ? "انصراف" : "اجرا";
    if (entry.button->text() == text) return;
    entry.button->setText(text);
    entry.button->setAccessibleName(text);
    entry.button->setToolTip(vorek::qt::TipOf(text, running ? Qt::Key_Escape : Qt::Key_F5));
    buttons_.SetIcon(*entry.button, running ? "close" : "run");
  }
}

void DeskToolbar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) buttons_.Recolor(palette());
}

}  // namespace vorek::desk
