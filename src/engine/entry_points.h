#ifndef VOREK_ENGINE_ENTRY_POINTS_H_
#define VOREK_ENGINE_ENTRY_POINTS_H_

#include "engine/report_control.h"

// The members of the control beside View and Refresh that show, empty or release a report. What
// they mean to a host stands in vorek/report.h.
namespace vorek {

// Each throws what the database throws.
void ShowWithParams(ReportControl& control, std::int32_t id);
void ViewRepotRelations(ReportControl& control, std::int32_t id,
                        const std::string& parameter_string);
void ViewReportWithoutParameters(ReportControl& control, std::int32_t called,
                                 const std::string& parameter_string, const std::string& title);

// No report any more: row 1 of both grids is emptied, headers and widths stay.
void ClearReport(ReportControl& control);

// Releases what a report holds. Always false, as its interface has it.
bool SetNull(ReportControl& control);

// Takes the "+" away from the rows of a tree that have no children any more, after its data has
// changed. Always false, as its interface has it.
bool DropUnusedRows(ReportControl& control);

}  // namespace vorek

#endif  // VOREK_ENGINE_ENTRY_POINTS_H_
