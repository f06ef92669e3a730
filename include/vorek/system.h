#ifndef VOREK_SYSTEM_H_
#define VOREK_SYSTEM_H_

#include <iosfwd>
#include <memory>
#include <string>

#include "vorek/property_store.h"
#include "vorek/world.h"

namespace vorek {

// The machine's clock in its time zone.
std::shared_ptr<Clock> MachineClock();

// A "screen" that writes what a form says, a line each, and closes the form as its close box would.
// The stream must outlive it.
std::shared_ptr<Windows> WindowsOnStream(std::ostream& out);

// The machine's file system; paths are UTF-8.
std::shared_ptr<Files> MachineFiles();

// The file of the user functions of formulas: by_host, else the environment variable
// VOREK_FUNCTIONS, else vorek/ANALIZEM.FUN in the user's settings folder ($XDG_CONFIG_HOME or
// $HOME/.config). Empty, which means no file, where there is none of all these.
std::string MachineFunctionFile(const std::string& by_host = "");

// The user's settings: vorek/settings.conf in the folder above. Null where there is none.
std::shared_ptr<Settings> MachineSettings();

// A store of a control's properties in a text file, a line "key=value" each.
std::unique_ptr<PropertyStore> PropertiesInFile(const std::string& path);

// A clock, the machine's files and settings, the file of functions, and messages on the standard
// error stream, where the options have none yet.
void AddSystemServices(WorldOptions& options);

}  // namespace vorek

#endif  // VOREK_SYSTEM_H_
