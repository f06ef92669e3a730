#ifndef VOREK_ADAPTERS_SYSTEM_SETTINGS_FOLDER_H_
#define VOREK_ADAPTERS_SYSTEM_SETTINGS_FOLDER_H_

#include <string>

namespace vorek {

// An environment variable, "" if it isn't set.
std::string EnvironmentText(const char* name);

// The user's settings folder: $XDG_CONFIG_HOME, else $HOME/.config; "" if neither is set. A
// relative $XDG_CONFIG_HOME counts as unset.
std::string SettingsFolder();

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_SETTINGS_FOLDER_H_
