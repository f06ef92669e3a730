#ifndef VOREK_APPS_VOREK_DRIVE_CHART_TEXT_H_
#define VOREK_APPS_VOREK_DRIVE_CHART_TEXT_H_

#include <string>
#include <vector>

#include "chart/chart_model.h"

namespace vorek::drive {

// What a chart shows, a line each: its title, the names of its series, its categories with their
// values, the ticks of its axis or the parts of its whole. Throws Error for an unknown kind.
std::vector<std::string> ChartLines(const ChartModel& chart, const std::string& kind);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_CHART_TEXT_H_
