#include <string>

#include "adapters/system/settings_folder.h"
#include "vorek/system.h"

namespace vorek {

std::string MachineFunctionFile(const std::string& by_host) {
  if (!by_host.empty()) return by_host;
  const std::string named = EnvironmentText("VOREK_FUNCTIONS");
  if (!named.empty()) return named;
  const std::string folder = SettingsFolder();
  return folder.empty() ? "" : folder + "/vorek/ANALIZEM.FUN";
}

}  // namespace vorek
