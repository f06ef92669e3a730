#ifndef VOREK_CHART_CHART_AXIS_H_
#define VOREK_CHART_CHART_AXIS_H_

#include <vector>

#include "chart/chart_model.h"

namespace vorek {

// The axis of the values, from low to high with a mark at each tick.
struct ChartAxis {
  FixedPoint low = 0;
  FixedPoint high = 0;
  std::vector<FixedPoint> ticks;

  // Where a value stands, 0 at low and 1 at high.
  double Part(FixedPoint value) const;
};

// The steps are 1, 2 or 5 times a power of ten, of times those of a clock (5, 10, 15, 30 minutes,
// whole hours), and as fine as `most` ticks allow; whole values have no broken steps. The ends are
// ticks too, save where no fixed-point value lies beyond the last value. most is at least 3.
ChartAxis MakeAxis(FixedPoint least, FixedPoint greatest, bool times, bool whole, int most);

// The axis of a chart for the series that `shown` has on. Bars begin at zero, lines where their
// values are. REQUIRES: kind isn't kShares, and the chart has no refusal for it.
ChartAxis AxisOf(const ChartModel& chart, ChartKind kind, const std::vector<bool>& shown, int most);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_AXIS_H_
