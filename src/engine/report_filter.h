#ifndef VOREK_ENGINE_REPORT_FILTER_H_
#define VOREK_ENGINE_REPORT_FILTER_H_

#include <string>

#include "engine/report_control.h"

// A report with only those of its records that pass a filter (catalog/filter.h). The filter stays
// over the runs of the report and ends when the connection is bound again, as the next View does. A
// tree takes it away: it filters its levels itself.
namespace vorek {

// Runs the report again with the filter, "" for none. Throws Error(kBadFilter) for a text that the
// fields of the last run can't take; the old filter and the rows then stay.
void SetReportFilter(ReportControl& control, const std::string& text);

// The menu entry: asks for a condition on the field of the current column of flxMain, for that of
// the column under the pointer in a cross table. Tells what can't be filtered.
void mnuFilter_Click(ReportControl& control);

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_FILTER_H_
