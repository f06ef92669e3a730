#include "adapters/qt/icon_buttons.h"

#include <QAction>
#include <QBoxLayout>
#include <QToolButton>
#include <algorithm>

#include "adapters/qt/icons.h"
#include "adapters/qt/theme.h"

namespace vorek::qt {

QString TipOf(const QString& text, const QKeySequence& key) {
  return key.isEmpty() ? text : text + " (" + key.toString(QKeySequence::NativeText) + ")";
}

QToolButton* IconButtons::Add(QBoxLayout& row, const QString& icon, const QString& text,
                              const QKeySequence& key) {
  constexpr int kIcon = 20;  // pixels
  auto* const button = new QToolButton(row.parentWidget());
  button->setObjectName(icon);
  button->setText(text);
  button->setAutoRaise(true);
  button->setToolButtonStyle(Qt::ToolButtonIconOnly);
  button->setIconSize({kIcon, kIcon});
  button->setFocusPolicy(Qt::TabFocus);
  button->setAccessibleName(text);
  button->setToolTip(TipOf(text, key));
  row.addWidget(button);
  entries_.push_back({button, icon});
  return button;
}

IconButtons::Entry& IconButtons::EntryOf(const QToolButton& button) {
  return *std::find_if(entries_.begin(), entries_.end(),
                       [&](const Entry& entry) { return entry.button == &button; });
}

void IconButtons::SetIcon(QToolButton& button, const QString& icon) {
  Entry& entry = EntryOf(button);
  entry.icon = icon;
  if (theme_ != nullptr) Paint(entry);
}

void IconButtons::SetOnAccent(QToolButton& button) { EntryOf(button).on_accent = true; }

void IconButtons::Recolor(const QPalette& palette) {
  theme_ = &ThemeOf(palette);
  for (const Entry& entry : entries_) Paint(entry);
}

void IconButtons::Paint(const Entry& entry) const {
  const QIcon icon =
      IconOf(entry.icon, entry.on_accent ? theme_->on_accent : theme_->text, theme_->muted);
  QAction* const action = entry.button->defaultAction();
  if (action != nullptr) action->setIcon(icon);
  entry.button->setIcon(icon);
}

}  // namespace vorek::qt
