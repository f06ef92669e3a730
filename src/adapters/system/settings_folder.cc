#include "adapters/system/settings_folder.h"

#include <cstdlib>

namespace vorek {

std::string EnvironmentText(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string SettingsFolder() {
  const std::string folder = EnvironmentText("XDG_CONFIG_HOME");
  if (!folder.empty() && folder.front() == '/') return folder;
  const std::string home = EnvironmentText("HOME");
  return home.empty() ? "" : home + "/.config";
}

}  // namespace vorek
