#ifndef VOREK_EXPORT_CRYSTAL_PRINT_H_
#define VOREK_EXPORT_CRYSTAL_PRINT_H_

#include <functional>
#include <string>

#include "grid/report_context.h"

namespace vorek {

// Prints the report on show through a stored template: its rows are staged in the database under
// the user's number, and a print job reads them there. Throws what the database, the file and the
// job throw; rows that were staged by then stay until the user's next print.
void PrintCrystal(ReportContext& report, const std::string& templatePath);

// The same for a template that was made of the grid: it reads the staged rows themselves, also
// where the report has a view over them.
void PrintList(ReportContext& report, const std::string& templatePath);

// PrintCrystal, and where the file is no template of ours: the user is told, and offered the list
// without one, which make_list writes to a file whose path it returns.
void PrintCrystalOrList(ReportContext& report, const std::string& templatePath,
                        const std::function<std::string()>& make_list);

// Puts the rows on show, and their headers where the database has a table for them, into the
// staging tables. What step of PrintCrystal that is, a host may want by itself.
void StageRows(ReportContext& report);

// The table of the staged rows, or the report's own view over it, by which its templates read them.
std::string StagedSource(Process& process, std::int32_t report_id);

}  // namespace vorek

#endif  // VOREK_EXPORT_CRYSTAL_PRINT_H_
