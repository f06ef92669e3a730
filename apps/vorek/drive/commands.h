#ifndef VOREK_APPS_VOREK_DRIVE_COMMANDS_H_
#define VOREK_APPS_VOREK_DRIVE_COMMANDS_H_

#include <map>
#include <string_view>

#include "drive/session.h"
#include "drive/words.h"

namespace vorek::drive {

// A line's work, with its words, the command in front. Throws Error for a line that can't be done.
using Command = void (*)(Session&, const Words&);
using Commands = std::map<std::string_view, Command>;

Commands ReportCommands();  // the report control as its host uses it
Commands UserCommands();    // the mouse and the keys
Commands MenuCommands();    // the pop-up that is open
Commands ListCommands();    // the lists of fields
Commands ShownCommands();   // what is printed of what shows
Commands StageCommands();   // what the script's surroundings do from now on

// All of them; docs/drive.md tells what each does.
const Commands& AllCommands();

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_COMMANDS_H_
