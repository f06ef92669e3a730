#ifndef VOREK_EXPORT_TEXT_EXPORT_H_
#define VOREK_EXPORT_TEXT_EXPORT_H_

#include <string>

#include "grid/report_context.h"
#include "vorek/output_file.h"

namespace vorek {

// How the rows of the active grid become text. Columns of width 0 and column 0 are left out, every
// row is written, line ends in cells are taken away.
struct TextFileOptions {
  enum class Kind {
    kDelimited,  // UTF-16, little endian, with its byte-order mark; a delimiter behind every cell
    kComma,      // UTF-8 with quotes where a text needs them, commas between
    kTab,        // UTF-8, tabs between; a tab in a text becomes a blank
  };
  Kind kind = Kind::kDelimited;
  std::string delimiter = "\t";  // of kDelimited
  bool new_line = true;          // behind the last row too
  bool header = true;
  bool remove_money = false;  // money without digit groups and brackets
  bool guard = false;  // a text that a spreadsheet program would take for a formula begins with "'"
};

// Writes the active grid; the caller commits. Throws Error.
void WriteTextFile(ReportContext& report, const TextFileOptions& options, OutputFile& out);

// Asks for file and options, writes, and tells the user how it went.
void ExportTextFile(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_EXPORT_TEXT_EXPORT_H_
