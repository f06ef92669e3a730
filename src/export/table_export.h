#ifndef VOREK_EXPORT_TABLE_EXPORT_H_
#define VOREK_EXPORT_TABLE_EXPORT_H_

#include "grid/report_context.h"
#include "vorek/output_file.h"

namespace vorek {

// The active grid with its cells as they are shown; the caller commits. Throw Error.

// One object: the report's number and title, the columns with their measures, the data rows; column
// 0 first, what is hidden is there and marked.
void WriteJsonFile(ReportContext& report, OutputFile& out);
// A page with a right-to-left table: column 0 first, without hidden rows and columns.
void WriteHtmlFile(ReportContext& report, OutputFile& out);

}  // namespace vorek

#endif  // VOREK_EXPORT_TABLE_EXPORT_H_
