#ifndef VOREK_CHART_CHART_SHARES_H_
#define VOREK_CHART_CHART_SHARES_H_

#include <string>
#include <vector>

#include "chart/chart_model.h"

namespace vorek {

// A part of the whole.
struct ChartShare {
  std::string name;
  FixedTotal total;
  double part = 0;  // of 1
};

// How many parts a chart of shares has at most.
constexpr std::size_t kMostShares = 8;

// The categories of a series by their size, the largest first and equals in their order; beyond
// `most` the smallest are joined into a last one, which tells how many they are. Empty ones are
// left out. REQUIRES: the chart has no refusal for shares of the series; most is at least 2.
std::vector<ChartShare> SharesOf(const ChartModel& chart, std::size_t series, std::size_t most);

// A part with one decimal: "12.5%".
std::string PercentText(double part);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_SHARES_H_
