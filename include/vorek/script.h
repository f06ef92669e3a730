#ifndef VOREK_SCRIPT_H_
#define VOREK_SCRIPT_H_

#include <string>
#include <string_view>
#include <vector>

#include "vorek/database.h"

namespace vorek {

// A piece of a script between two lines "GO".
struct ScriptBatch {
  std::string text;
  int first_line = 1;              // of the script
  int count = 1;                   // "GO 5" runs it five times
  std::vector<std::string> notes;  // of what was passed over in front of it or in it
};

// A script file's bytes as UTF-8. UTF-16 is told by the mark that it begins with. Throws
// Error(kSyntax) with the place of the first byte that isn't UTF-8.
std::string ScriptText(std::string bytes);

// Cuts a script at its lines that hold the word GO alone, in any case, perhaps with a count; not
// within texts, quoted names and comments. Pieces with nothing but blanks are left out. Lines of a
// script tool, ":setvar" and ":on error", are passed over.
std::vector<ScriptBatch> SplitScript(std::string_view script);

// Runs a script in one transaction: all of it or nothing. The embedded database refuses a COMMIT or
// ROLLBACK in it that would end that transaction, and takes no writer's place for a script that
// only reads. The row sets that it gives are returned in order; options.message is told what it
// prints and what was passed over. Throws Error with the line that failed in its text.
std::vector<ResultSetPtr> RunScript(DatabaseConnection& connection, std::string_view script,
                                    const ExecuteOptions& options);

}  // namespace vorek

#endif  // VOREK_SCRIPT_H_
