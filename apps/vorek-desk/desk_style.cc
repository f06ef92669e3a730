#include "desk_style.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

#include "adapters/qt/colors.h"
#include "adapters/qt/icons.h"
#include "adapters/qt/theme.h"

namespace vorek::desk {
namespace {

using vorek::qt::Theme;

// Draws the outline of a check box, which the style leaves as dark as its ground, and calm crosses
// on tabs.
class DeskStyle : public QProxyStyle {
 public:
  DeskStyle() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_IndicatorTabClose) return DrawCross(*option, *painter);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorItemViewItemCheck && element != PE_IndicatorCheckBox) return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::PlaceholderText));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }

 private:
  static void DrawCross(const QStyleOption& option, QPainter& painter) {
    const Theme& theme = vorek::qt::ThemeOf(option.palette);
    const bool pointed = option.state.testFlag(State_MouseOver);
    vorek::qt::IconOf("close", pointed ? theme.text : theme.muted, theme.muted)
        .paint(&painter, option.rect);
  }
};

// Measures stand on a grid of 4 pixels; %NAME is a colour of the theme.
constexpr const char* kSheet = R"(
#deskToolbar { background: %panel; border-bottom: 1px solid %line; }
#deskToolbar QToolButton { border: none; border-radius: 6px; padding: 4px 8px; min-height: 24px; }
#deskToolbar QToolButton:hover, #deskToolbar QToolButton:pressed { background: %head; }
#deskToolbar QToolButton:focus { background: %soft; }
#deskToolbar QToolButton[recommended="true"] { background: %soft; }
#deskToolbar QToolButton:disabled { color: %muted; }
#deskToolbar QToolButton#run { background: %accent; color: %on; padding: 4px 12px; }
#deskToolbar QToolButton#run:disabled { background: %head; color: %muted; }
#deskToolbar QToolButton::menu-indicator { image: none; }
#deskToolbar QLabel { color: %muted; padding: 0 8px; }
#deskToolbar QFrame#gap { background: %line; max-width: 1px; margin: 6px; }
#cataloguePanel, #startPage { background: %panel; }
#search, #findText { border: 1px solid %line; border-radius: 6px; padding: 4px 8px;
  background: %ground; color: %text; }
#search:focus, #findText:focus { border-color: %accent; }
#catalogue { border: none; background: %panel; outline: none; }
#catalogue::item { padding: 1px 0; border: none; }
#catalogue::item:selected { background: %soft; color: %text; }
#nothingFound { color: %muted; }
QTabWidget#reports::pane { border: none; border-top: 1px solid %line; }
QTabWidget#reports > QTabBar::tab { padding: 6px 12px; margin: 4px 1px 0 1px; color: %muted;
  border: 1px solid transparent; border-top-left-radius: 8px; border-top-right-radius: 8px; }
QTabWidget#reports > QTabBar::tab:selected { background: %panel; color: %text;
  border-color: %line; border-bottom-color: %panel; }
QTabWidget#reports > QTabBar::tab:hover:!selected { background: %head; }
#reportTab { background: %panel; }
QStatusBar { background: %panel; border-top: 1px solid %line; }
QStatusBar::item { border: none; }
QStatusBar QLabel { color: %muted; }
QSplitter::handle { background: %line; }
#startPage QLabel#invitation { font-size: 18px; color: %text; }
#startPage QLabel#head { color: %muted; }
#startPage QToolButton { border: none; border-radius: 6px; padding: 6px 8px; color: %text; }
#startPage QToolButton:hover, #startPage QToolButton:focus { background: %soft; }
#headBar { background: %panel; }
#headBar QLabel#headTitle { color: %text; }
#headBar QFrame#chip { background: %head; border: 1px solid %line; border-radius: 12px; }
#headBar QLabel#chipName, #headBar QLabel#headRest { color: %muted; }
#headBar QToolButton { border: none; border-radius: 6px; padding: 2px 8px; color: %accent; }
#headBar QToolButton:hover, #headBar QToolButton:focus { background: %soft; }
#resultBar { background: %panel; border-top: 1px solid %line; }
#resultBar QLabel { color: %muted; }
#resultBar QLabel#resultFigures { color: %text; }
#findBar { background: %panel; border: 1px solid %line; border-radius: 8px; }
#findBar QToolButton { border: none; border-radius: 4px; padding: 2px; }
#findBar QToolButton:hover, #findBar QToolButton:focus { background: %soft; }
)";

QString SheetOf(const Theme& theme) {
  const std::pair<const char*, QColor> colors[] = {
      {"%panel", theme.panel},  {"%line", theme.line},     {"%head", theme.head},
      {"%soft", theme.soft},    {"%muted", theme.muted},   {"%accent", theme.accent},
      {"%on", theme.on_accent}, {"%ground", theme.ground}, {"%text", theme.text}};
  QString sheet = kSheet;
  for (const auto& [name, color] : colors) sheet.replace(name, color.name());
  return sheet;
}

// Latin letters and digits come from the first family that has them, Persian ones likewise.
QFont DeskFont() {
  const QStringList installed = QFontDatabase::families();
  QStringList families;
  for (const char* const family : {"Vazirmatn", "Noto Sans", "Noto Sans Arabic"}) {
    if (installed.contains(family)) families << family;
  }
  QFont font = QApplication::font();
  if (!families.isEmpty()) font.setFamilies(families + font.families());
  return font;
}

}  // namespace

void ApplyTheme(const QString& theme) {
  static const QPalette system = QApplication::palette();
  const bool dark = theme.isEmpty() ? vorek::qt::IsDark(system) : theme == "dark";
  const Theme& colors = dark ? vorek::qt::DarkTheme() : vorek::qt::LightTheme();
  QApplication::setStyle(new DeskStyle);
  QApplication::setPalette(vorek::qt::PaletteOf(colors));
  QApplication::setFont(DeskFont());
  qApp->setStyleSheet(SheetOf(colors));
}

}  // namespace vorek::desk
