#ifndef VOREK_ENGINE_QUICK_SEARCH_H_
#define VOREK_ENGINE_QUICK_SEARCH_H_

#include "engine/report_control.h"

namespace vorek {

// Opens the search box over the column under the pointer, or over the current one if the pointer
// isn't on the grid, and moves to the first row that holds its text.
void mnuQuickSearch_Click(ReportControl& control);

// Searches on for the text that was put into the box last.
void RepeatQuickSearch(ReportControl& control);

}  // namespace vorek

#endif  // VOREK_ENGINE_QUICK_SEARCH_H_
