#include "adapters/qt/theme.h"

#include "adapters/qt/colors.h"

namespace vorek::qt {

const Theme& LightTheme() {
  static const Theme theme = {
      .ground = 0xF5F6F8,
      .panel = 0xFFFFFF,
      .line = 0xD5DAE1,
      .text = 0x1C2430,
      .muted = 0x5B6577,
      .accent = 0x1F6FEB,
      .on_accent = 0xFFFFFF,
      .soft = 0xE8F0FE,
      .head = 0xEEF1F5,
      .picked = 0x8FB6EF,
      .sum = 0xFFF8E5,
      .sum_line = 0xA8821F,
      .hit = 0xFFE97A,
      .star = 0xA97B00,
      .danger = 0xB42318,
  };
  return theme;
}

const Theme& DarkTheme() {
  static const Theme theme = {
      .ground = 0x14181F,
      .panel = 0x1B212B,
      .line = 0x333C4A,
      .text = 0xE6EAF0,
      .muted = 0x9AA5B5,
      .accent = 0x5B9CFF,
      .on_accent = 0x0B1220,
      .soft = 0x1F3354,
      .head = 0x232B37,
      .picked = 0x35619F,
      .sum = 0x332B14,
      .sum_line = 0xB08C2E,
      .hit = 0x6B5C12,
      .star = 0xE0A100,
      .danger = 0xFF9B8F,
  };
  return theme;
}

const Theme& ThemeOf(const QPalette& palette) {
  return IsDark(palette) ? DarkTheme() : LightTheme();
}

QPalette PaletteOf(const Theme& theme) {
  QPalette palette(theme.head, theme.ground);
  palette.setColor(QPalette::Base, theme.panel);
  palette.setColor(QPalette::AlternateBase, theme.ground);
  palette.setColor(QPalette::ToolTipBase, theme.head);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, theme.text);
    palette.setColor(QPalette::Disabled, role, theme.muted);
  }
  palette.setColor(QPalette::PlaceholderText, theme.muted);
  palette.setColor(QPalette::Highlight, theme.accent);
  palette.setColor(QPalette::HighlightedText, theme.on_accent);
  palette.setColor(QPalette::Link, theme.accent);
  palette.setColor(QPalette::LinkVisited, theme.accent);
  return palette;
}

}  // namespace vorek::qt
