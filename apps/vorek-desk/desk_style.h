#ifndef VOREK_APPS_VOREK_DESK_DESK_STYLE_H_
#define VOREK_APPS_VOREK_DESK_DESK_STYLE_H_

#include <QString>

namespace vorek::desk {

// Gives the application the desktop's look: its palette "light" or "dark", or for "" the one that
// fits the system's colours; a font with Persian letters of its own where one is installed. May be
// called again. REQUIRES a QApplication.
void ApplyTheme(const QString& theme);

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_DESK_STYLE_H_
