#ifndef VOREK_APPS_VOREK_DESK_THEME_H_
#define VOREK_APPS_VOREK_DESK_THEME_H_

#include <QString>

namespace vorek::desk {

// "light", "dark", or anything else for the system's own colours. REQUIRES a QApplication.
void ApplyTheme(const QString& theme);

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_THEME_H_
