#include "adapters/qt/told_line.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace vorek::qt {

void ToldLine::Show(const QString& text, QWidget* over) {
  if (over == nullptr) return;
  delete over->findChild<QWidget*>("toldLine", Qt::FindDirectChildrenOnly);
  new ToldLine(text, over);
}

ToldLine::ToldLine(const QString& text, QWidget* over) : QFrame(over) {
  setObjectName("toldLine");
  setAccessibleName(text);
  setLayoutDirection(Qt::RightToLeft);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  auto* const layout = new QHBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  auto* const label = new QLabel(text, this);
  label->setForegroundRole(QPalette::ToolTipText);
  layout->addWidget(label);
  adjustSize();
  Place();
  show();
  raise();
  qApp->installEventFilter(this);
}

void ToldLine::Place() {
  const QRect over = parentWidget()->rect();
  move(over.center().x() - width() / 2, over.bottom() - 2 * height());
}

bool ToldLine::eventFilter(QObject* object, QEvent* event) {
  const bool ends = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
  const auto* const widget = qobject_cast<const QWidget*>(object);
  if (widget == nullptr) return false;
  if (ends && widget->window() == window()) {
    hide();
    deleteLater();
  } else if (event->type() == QEvent::Resize && widget == parentWidget()) {
    Place();
  }
  return false;
}

}  // namespace vorek::qt
