#include "settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vorek::desk {

QString PrivateFile(const QString& path) {
  constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner;
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  // From the first byte on, not only after a moment.
  if (!file.exists() && file.open(QFile::WriteOnly | QFile::NewOnly, kOwner)) file.close();
  file.setPermissions(kOwner);
  return path;
}

}  // namespace vorek::desk
