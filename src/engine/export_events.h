#ifndef VOREK_ENGINE_EXPORT_EVENTS_H_
#define VOREK_ENGINE_EXPORT_EVENTS_H_

#include <cstdint>

#include "engine/report_control.h"

namespace vorek {

// The entries of the header's menu that lead out to files.
void mnuSendToTextFile_Click(ReportControl& control);
void mnuSendToOfficeExcel_Click(ReportControl& control);
void mnuSendToOfficeExcellFast_Click(ReportControl& control);
void mnuSendToAccess_Click(ReportControl& control);

// ExportExcel (export/excel_export.h), whose failure is told to the user.
void ExportExcel(ReportControl& control, std::int32_t report_id);

}  // namespace vorek

#endif  // VOREK_ENGINE_EXPORT_EVENTS_H_
