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

// The folder in which finished workbooks are kept, that of the user's documents unless another one
// is named, and the desktop's program for opening them.
std::shared_ptr<Documents> MachineDocuments(const std::string& folder = "");

// The system's folder for temporary files.
std::shared_ptr<TemporaryFiles> MachineTemporaryFiles();

// Workbooks of the old format by LibreOffice or, without its charts, by gnumeric's ssconvert,
// whichever is installed, within a minute. What was converted is kept in the user's cache.
std::shared_ptr<WorkbookConverter> MachineWorkbookConverter();

// A store of a control's properties in a text file, a line "key=value" each.
std::unique_ptr<PropertyStore> PropertiesInFile(const std::string& path);

// A clock, the machine's files, settings, documents and temporary files, the converter of
// workbooks, the file of functions, and messages on the standard error stream, where the options
// have none yet.
void AddSystemServices(WorldOptions& options);

}  // namespace vorek

#endif  // VOREK_SYSTEM_H_
