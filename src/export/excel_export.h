#ifndef VOREK_EXPORT_EXCEL_EXPORT_H_
#define VOREK_EXPORT_EXCEL_EXPORT_H_

#include <cstdint>
#include <memory>
#include <string>

#include "export/form_template.h"
#include "export/plain_money.h"
#include "grid/report_context.h"
#include "vorek/output_file.h"
#include "vorek/sheet_chart.h"

namespace vorek {

// The print entry of a report: asks for a template and fills it, or writes a new workbook, and
// shows what was made. A number below 1 does nothing. Throws Error; the grids are then as they
// should be.
void ExportExcel(ReportContext& report, FormTemplate& form, std::int32_t report_id);

// The whole active grid as it is shown, column 0 too, to the clipboard and into a workbook that is
// shown. Errors are ignored.
void ExportExcelFast(ReportContext& report);

// False if the system parameter 6 takes the formats of exported cells away.
bool ExcelCellFormatting(Process& process);

// How the workbook of a report is written.
struct NewWorkbookOptions {
  bool formatted = true;              // cells get their formats: all are texts then
  bool locked = false;                // the sheet is protected
  const SheetChart* chart = nullptr;  // comes behind the rows, on a sheet of its own
};

// Writes the active grid into a new workbook. Returns the count of its sheets of rows. Throws
// Error.
std::size_t WriteNewWorkbook(ReportContext& report, const PlainMoney& money,
                             const NewWorkbookOptions& options, std::unique_ptr<OutputFile> out);

}  // namespace vorek

#endif  // VOREK_EXPORT_EXCEL_EXPORT_H_
