#include "theme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace vorek::desk {
namespace {

// Draws the outline of a check box, which the style leaves as dark as its ground.
class DarkStyle : public QProxyStyle {
 public:
  DarkStyle() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorItemViewItemCheck && element != PE_IndicatorCheckBox) return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::PlaceholderText));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }
};

QPalette Dark() {
  QPalette palette(QColor(0x35, 0x36, 0x3A), QColor(0x2B, 0x2C, 0x30));
  palette.setColor(QPalette::Base, QColor(0x1F, 0x20, 0x23));
  palette.setColor(QPalette::AlternateBase, QColor(0x2B, 0x2C, 0x30));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, QColor(0xE8, 0xEA, 0xED));
    palette.setColor(QPalette::Disabled, role, QColor(0x8A, 0x8D, 0x91));
  }
  palette.setColor(QPalette::PlaceholderText, QColor(0x9A, 0x9D, 0xA1));
  palette.setColor(QPalette::ToolTipBase, QColor(0x35, 0x36, 0x3A));
  palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB5));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x8A, 0xB4, 0xF8));
  return palette;
}

}  // namespace

void ApplyTheme(const QString& theme) {
  if (theme != "light" && theme != "dark") return;
  if (theme == "dark") {
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(Dark());
  } else {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(QApplication::style()->standardPalette());
  }
}

}  // namespace vorek::desk
