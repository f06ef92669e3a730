#ifndef VOREK_CHART_CHART_THINNING_H_
#define VOREK_CHART_CHART_THINNING_H_

#include <cstdint>
#include <vector>

#include "chart/chart_model.h"

namespace vorek {

// Which of many points are drawn, in their order and at most `most` of them (at least 2): of each
// of equal runs of points the one with the least of `low` and the one with the greatest of `high`,
// the first of equals. A run without any value keeps its first point, so that a line breaks there.
// All, if they are few enough. REQUIRES: low and high are of one length; they may be the same.
std::vector<std::uint32_t> Thinned(const std::vector<ChartValue>& low,
                                   const std::vector<ChartValue>& high, std::size_t most);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_THINNING_H_
