#include "engine/export_events.h"

#include "export/access_export.h"
#include "export/excel_export.h"
#include "export/text_export.h"
#include "platform/attempt.h"

namespace vorek {

void mnuSendToTextFile_Click(ReportControl& control) {
  ReportContext report = control.Context();
  ExportTextFile(report);
}

void mnuSendToOfficeExcel_Click(ReportControl& control) {
  ExportExcel(control, control.state.ReportID);
}

void mnuSendToOfficeExcellFast_Click(ReportControl& control) {
  ReportContext report = control.Context();
  ExportExcelFast(report);
}

void mnuSendToAccess_Click(ReportControl& control) {
  ReportContext report = control.Context();
  ExportAccess(report);
}

void ExportExcel(ReportControl& control, std::int32_t report_id) {
  ReportContext report = control.Context();
  const auto error = Attempt([&] { ExportExcel(report, control.world.TemplateForm(), report_id); });
  if (!error) return;
  Windows& windows = control.world.process.windows();
  windows.SetMousePointer(0);
  if (error->Is(ErrorNumber::kCancelled) && windows.TellCancelled("ساختن فايل لغو شد.")) return;
  const auto number = static_cast<std::int32_t>(error->Number());
  control.world.messages.DisplayError(number, "در گزارشگيري، اشكالي وجود دارد.",
                                      error->Description(), "عمل مورد نظر غير مجاز است", number);
}

}  // namespace vorek
