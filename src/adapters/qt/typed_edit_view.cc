#include "adapters/qt/typed_edit_view.h"

#include <QAction>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "adapters/qt/colors.h"

namespace vorek::qt {
namespace {

// The arrow of the style, in the colour of the text.
QIcon DownArrow(const QWidget& widget) {
  constexpr int kSize = 32;
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(widget.palette().text());
  painter.drawPolygon(QPolygon({QPoint(8, 12), QPoint(24, 12), QPoint(16, 22)}));
  return QIcon(picture);
}

}  // namespace

TypedEditView::TypedEditView(Presenter& presenter, TypedControl& control, QWidget& parent)
    : ControlView(presenter, control, new QLineEdit(&parent)) {
  connect(&Edit(), &QLineEdit::textEdited, this, [this](const QString& text) {
    half_typed_ = true;
    Typed(text);
  });
}

TypedControl& TypedEditView::Typing() const { return static_cast<TypedControl&>(Shown()); }

void TypedEditView::Set(std::string_view property) {
  constexpr std::array<std::string_view, 11> kCommon = {
      "Left",    "Top",         "Width",  "Height",   "Visible",    "Enabled",
      "TabStop", "ToolTipText", "ZOrder", "TabIndex", "RightToLeft"};
  if (std::find(kCommon.begin(), kCommon.end(), property) != kCommon.end()) {
    ControlView::Set(property);
    return;
  }
  if (property == "Refusal") Mark();
  ShowText();
}

void TypedEditView::SetAll() {
  ControlView::SetAll();
  Mark();
  ShowText();
}

void TypedEditView::ShowText() {
  if (half_typed_) return;
  const QString text = Typing().Refuses() ? ToQt(Typing().RefusedText()) : ShownText();
  if (Edit().text() != text) Edit().setText(text);
}

// A ground and a frame in red, and the reason for who can't see them.
void TypedEditView::Mark() {
  const bool refuses = Typing().Refuses();
  const bool dark = IsDark(Edit().parentWidget()->palette());
  // What the line opens is a child of it and stays as it is.
  Edit().setProperty("refused", refuses);
  const QString look = dark ? "border: 1px solid #FF7B7B; background: #4A1F1F;"
                            : "border: 1px solid #B82020; background: #FDECEC;";
  Edit().setStyleSheet(refuses ? "QLineEdit[refused=\"true\"] { " + look + " }" : QString());
  Edit().setAccessibleDescription(ToQt(Typing().Refusal()));
}

void TypedEditView::Commit() {
  if (!std::exchange(half_typed_, false)) return;
  const std::string text = Edit().text().toStdString();
  Feed([&] { Typing().Type(text); });
  if (Retired()) return;
  ShowText();
  if (Typing().Refuses()) Refused();
}

// Where a person leaves a text that isn't taken for another part of the same window, the focus
// comes back. Another window may be used meanwhile.
void TypedEditView::KeepFocus(const QFocusEvent& event) {
  const bool by_hand = event.reason() == Qt::MouseFocusReason ||
                       event.reason() == Qt::TabFocusReason ||
                       event.reason() == Qt::BacktabFocusReason;
  if (!by_hand || !Typing().Refuses()) return;
  QTimer::singleShot(0, this, [this] {
    const bool here = !Retired() && Typing().Refuses() && Edit().isVisible();
    if (here && Owner().HasFocusInside()) Edit().setFocus(Qt::OtherFocusReason);
  });
}

void TypedEditView::AddOpener(const QString& name, QLineEdit::ActionPosition left_end,
                              const std::function<void()>& open) {
  open_ = open;
  QAction* const action = Edit().addAction(DownArrow(Edit()), left_end);
  action->setText(name);
  connect(action, &QAction::triggered, this, [this] { open_(); });
}

bool TypedEditView::eventFilter(QObject* object, QEvent* event) {
  if (Retired() || object != &Widget()) return ControlView::eventFilter(object, event);
  if (event->type() == QEvent::FocusOut) {
    const auto& out = *static_cast<QFocusEvent*>(event);
    // The typing goes on when the window, or what it opened, is left.
    const bool away =
        out.reason() == Qt::ActiveWindowFocusReason || out.reason() == Qt::PopupFocusReason;
    if (!away) ControlView::eventFilter(object, event);
    if (!away && !Retired()) KeepFocus(out);
    return false;
  }
  if (event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_Escape) half_typed_ = false;
    const bool stays = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
    if (stays) Commit();
    if (stays && !Retired() && Typing().Refuses()) return true;
  }
  if (event->type() == QEvent::KeyPress && open_) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool alt_down = key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier;
    if (alt_down || key->key() == Qt::Key_F4) {
      open_();
      return true;
    }
  }
  const bool handled = ControlView::eventFilter(object, event);
  if (!Retired() && event->type() == QEvent::KeyPress) ShowText();
  return handled;
}

}  // namespace vorek::qt
