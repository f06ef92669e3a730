#ifndef VOREK_APPS_VOREK_DESK_SETTINGS_FILE_H_
#define VOREK_APPS_VOREK_DESK_SETTINGS_FILE_H_

#include <QString>

namespace vorek::desk {

// Sees to it that the file is there and that nobody but its owner may read it; QSettings keeps both
// when it writes. Gives the path back.
QString PrivateFile(const QString& path);

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_SETTINGS_FILE_H_
