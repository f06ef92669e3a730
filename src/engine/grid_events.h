#ifndef VOREK_ENGINE_GRID_EVENTS_H_
#define VOREK_ENGINE_GRID_EVENTS_H_

#include "engine/report_control.h"

namespace vorek {

// Leads the events of both grids, and the entries of their menus, to what they do.
void ConnectGridEvents(ReportControl& control);

}  // namespace vorek

#endif  // VOREK_ENGINE_GRID_EVENTS_H_
