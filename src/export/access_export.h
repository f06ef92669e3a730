#ifndef VOREK_EXPORT_ACCESS_EXPORT_H_
#define VOREK_EXPORT_ACCESS_EXPORT_H_

#include "grid/report_context.h"

namespace vorek {

// Asks for a table of an Access file and appends the rows of flxMain to it, each by an insert. A
// failure is told to the user; rows before it stay in the file.
void ExportAccess(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_EXPORT_ACCESS_EXPORT_H_
