#include "adapters/qt/typed_edit_view.h"

#include <QAction>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <utility>

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

TypedEditView::TypedEditView(Presenter& presenter, Control& control, QWidget& parent)
    : ControlView(presenter, control, new QLineEdit(&parent)) {
  connect(&Edit(), &QLineEdit::textEdited, this, [this](const QString& text) {
    half_typed_ = true;
    Typed(text);
  });
}

void TypedEditView::Set(std::string_view property) {
  constexpr std::array<std::string_view, 11> kCommon = {
      "Left",    "Top",         "Width",  "Height",   "Visible",    "Enabled",
      "TabStop", "ToolTipText", "ZOrder", "TabIndex", "RightToLeft"};
  if (std::find(kCommon.begin(), kCommon.end(), property) != kCommon.end()) {
    ControlView::Set(property);
  } else {
    ShowText();
  }
}

void TypedEditView::SetAll() {
  ControlView::SetAll();
  ShowText();
}

void TypedEditView::ShowText() {
  const QString text = ShownText();
  if (!half_typed_ && Edit().text() != text) Edit().setText(text);
}

void TypedEditView::Commit() {
  if (!std::exchange(half_typed_, false)) return;
  const std::string text = Edit().text().toStdString();
  try {
    Shown().Type(text);
  } catch (const Error& error) {
    QToolTip::showText(Edit().mapToGlobal(QPoint(0, Edit().height())), ToQt(error.Description()),
                       &Edit());
  }
  if (!Retired()) ShowText();
}

void TypedEditView::AddOpener(const QString& name, const std::function<void()>& open) {
  open_ = open;
  QAction* const action = Edit().addAction(DownArrow(Edit()), QLineEdit::TrailingPosition);
  action->setText(name);
  connect(action, &QAction::triggered, this, [this] { open_(); });
}

bool TypedEditView::eventFilter(QObject* object, QEvent* event) {
  if (object == &Widget() && event->type() == QEvent::KeyPress && open_) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool alt_down = key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier;
    if (alt_down || key->key() == Qt::Key_F4) {
      open_();
      return true;
    }
  }
  return ControlView::eventFilter(object, event);
}

}  // namespace vorek::qt
