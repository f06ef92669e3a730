#include "theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace vorek::desk {
namespace {

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
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QApplication::setPalette(theme == "dark" ? Dark() : QApplication::style()->standardPalette());
}

}  // namespace vorek::desk
