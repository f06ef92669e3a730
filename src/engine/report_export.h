#ifndef VOREK_ENGINE_REPORT_EXPORT_H_
#define VOREK_ENGINE_REPORT_EXPORT_H_

#include <string>

#include "vorek/sheet_chart.h"

namespace vorek {

class ReportControl;

// Writes the table on show into a new workbook at the path, UTF-8, with the chart behind it; see
// ExportReport (vorek/export.h), also for what it returns and throws.
std::string ExportWithChart(ReportControl& control, const std::string& path,
                            const SheetChart& chart);

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_EXPORT_H_
