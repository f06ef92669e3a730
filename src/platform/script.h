#ifndef VOREK_PLATFORM_SCRIPT_H_
#define VOREK_PLATFORM_SCRIPT_H_

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace vorek {

// A piece of a script between two lines "GO".
struct ScriptBatch {
  std::string text;
  int first_line = 1;  // of the script
  int count = 1;       // "GO 5" runs it five times
};

// Cuts a script at its lines that hold the word GO alone, in any case, perhaps with a count; not
// within texts, quoted names and comments. Pieces with nothing but blanks are left out.
std::vector<ScriptBatch> SplitScript(std::string_view script);

// Runs a script in one transaction: all of it or nothing. The row sets that it gives are returned
// in order, one for each piece at most. Throws Error with the line that failed in its text.
std::vector<ResultSetPtr> RunScript(DatabaseConnection& connection, std::string_view script,
                                    const ExecuteOptions& options);

}  // namespace vorek

#endif  // VOREK_PLATFORM_SCRIPT_H_
