#ifndef VOREK_STATE_FILE_DIALOGS_H_
#define VOREK_STATE_FILE_DIALOGS_H_

#include <string>

#include "state/notices.h"
#include "state/process.h"

namespace vorek {

// Asks for a file to write. True if a name was chosen, which then stands in file_name.
bool SaveFileDialog(Process& process, std::string& file_name, const std::string& filter);

// Asks for a file that exists; a name without a file is told to the user and refused. The folder of
// the chosen file is kept in the user's settings.
bool OpenFileDialog(Process& process, Notices& notices, std::string& file_name,
                    const std::string& filter, const std::string& title,
                    const std::string& default_extension);

}  // namespace vorek

#endif  // VOREK_STATE_FILE_DIALOGS_H_
