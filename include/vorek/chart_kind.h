#ifndef VOREK_CHART_KIND_H_
#define VOREK_CHART_KIND_H_

namespace vorek {

// How a chart shows its series; shares show the categories of one series as parts of its whole.
enum class ChartKind { kBars, kStackedBars, kLines, kShares };

}  // namespace vorek

#endif  // VOREK_CHART_KIND_H_
