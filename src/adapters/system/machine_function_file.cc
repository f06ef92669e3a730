#include <cstdlib>
#include <string>

#include "vorek/system.h"

namespace vorek {
namespace {

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// A relative $XDG_CONFIG_HOME counts as unset.
std::string SettingsFolder() {
  const std::string folder = Variable("XDG_CONFIG_HOME");
  if (!folder.empty() && folder.front() == '/') return folder;
  const std::string home = Variable("HOME");
  return home.empty() ? "" : home + "/.config";
}

}  // namespace

std::string MachineFunctionFile(const std::string& by_host) {
  if (!by_host.empty()) return by_host;
  const std::string named = Variable("VOREK_FUNCTIONS");
  if (!named.empty()) return named;
  const std::string folder = SettingsFolder();
  return folder.empty() ? "" : folder + "/vorek/ANALIZEM.FUN";
}

}  // namespace vorek
