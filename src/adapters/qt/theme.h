#ifndef VOREK_ADAPTERS_QT_THEME_H_
#define VOREK_ADAPTERS_QT_THEME_H_

#include <QColor>
#include <QPalette>

namespace vorek::qt {

// The colours of the desktop, by what they are for. Texts stand out from their grounds by at least
// 4.5 to 1, marks by 3 to 1 (Web Content Accessibility Guidelines 2.1, 1.4.3 and 1.4.11).
struct Theme {
  QColor ground;  // behind panels and in fields of the window
  QColor panel;   // toolbar, catalogue, sheets
  QColor line;    // between them
  QColor text;
  QColor muted;      // what is read second
  QColor accent;     // the one colour that asks for a look
  QColor on_accent;  // texts on it
  QColor soft;       // a chosen row of a list
  QColor head;       // headers of a grid
  QColor picked;     // the selection of a grid
  QColor sum;        // the pinned rows at a grid's end
  QColor sum_line;   // above them
  QColor hit;        // what a search found
  QColor star;       // favourites
  QColor danger;     // negative amounts, refusals
};

const Theme& LightTheme();
const Theme& DarkTheme();
// The one that fits a palette.
const Theme& ThemeOf(const QPalette& palette);
// The palette that widgets of the toolkit take for a theme.
QPalette PaletteOf(const Theme& theme);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_THEME_H_
