#ifndef VOREK_ENGINE_FLX_TRANSPOSE_EVENTS_H_
#define VOREK_ENGINE_FLX_TRANSPOSE_EVENTS_H_

#include "engine/report_control.h"

// Where the events of flxTranspose lead; its keys lead where those of flxMain do.
namespace vorek {

void flxTranspose_Click(ReportControl& control);
void flxTranspose_DblClick(ReportControl& control);
void flxTranspose_SelChange(ReportControl& control);
void flxTranspose_MouseDown(ReportControl& control, int button, int shift);
void flxTranspose_Scroll(ReportControl& control);

}  // namespace vorek

#endif  // VOREK_ENGINE_FLX_TRANSPOSE_EVENTS_H_
