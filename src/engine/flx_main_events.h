#ifndef VOREK_ENGINE_FLX_MAIN_EVENTS_H_
#define VOREK_ENGINE_FLX_MAIN_EVENTS_H_

#include "engine/report_control.h"

// Where the events of flxMain lead. Keys and buttons are numbered as in widgets/control.h.
namespace vorek {

void flxMain_Click(ReportControl& control);
void flxMain_DblClick(ReportControl& control);
void flxMain_SelChange(ReportControl& control);
// On a tree the arrow towards the rows' end opens the current row, the one towards their beginning
// closes it.
void flxMain_KeyDown(ReportControl& control, int key_code, int shift);
void flxMain_MouseDown(ReportControl& control, int button, int shift);
void flxMain_MouseMove(ReportControl& control);
void flxMain_Scroll(ReportControl& control);

// True if the pointer is on a row that can be given up: the last one, with no number in column 0.
bool IsOnLastSummary(const Grid& grid);

}  // namespace vorek

#endif  // VOREK_ENGINE_FLX_MAIN_EVENTS_H_
