#include "chart/chart_axis.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vorek {
namespace {

constexpr std::int64_t kUnit = 10000;  // one, in ten-thousandths
constexpr std::int64_t kHour = 60 * kUnit;

// How many steps the axis takes between its ends, when both are moved out to a multiple.
std::uint64_t StepsOver(FixedPoint least, FixedPoint greatest, std::int64_t step) {
  const auto above = static_cast<std::uint64_t>(greatest / step + (greatest % step > 0 ? 1 : 0));
  const auto below = static_cast<std::uint64_t>(least / step - (least % step < 0 ? 1 : 0));
  return above - below;
}

// The next larger of 1, 2, 5, 10, 20 ... units.
std::int64_t NextStep(std::int64_t step, std::int64_t unit) {
  std::int64_t power = unit;
  while (step / power >= 10) power *= 10;
  const std::int64_t times = step / power;
  return power * (times == 1 ? 2 : times == 2 ? 5 : 10);
}

std::int64_t NextTimeStep(std::int64_t step) {
  constexpr std::array<std::int64_t, 7> kMinutes = {1, 2, 5, 10, 15, 30, 60};
  for (const std::int64_t minutes : kMinutes) {
    if (minutes * kUnit > step) return minutes * kUnit;
  }
  return NextStep(step, kHour);
}

std::int64_t StepFor(FixedPoint least, FixedPoint greatest, bool times, bool whole, int most) {
  constexpr std::int64_t kLargest = 5'000'000'000'000'000'000;  // no next one fits
  std::int64_t step = times || whole ? kUnit : 1;
  while (step < kLargest &&
         StepsOver(least, greatest, step) >= static_cast<std::uint64_t>(std::max(most, 3))) {
    step = times ? NextTimeStep(step) : NextStep(step, 1);
  }
  return step;
}

struct Extent {
  ChartValue least;
  ChartValue greatest;
  bool whole = true;

  void Add(const std::vector<ChartValue>& values) {
    for (const ChartValue& value : values) {
      if (value) Add(*value);
    }
  }
  void Add(FixedPoint value) {
    least = least ? std::min(*least, value) : value;
    greatest = greatest ? std::max(*greatest, value) : value;
    whole = whole && value % kUnit == 0;
  }
};

}  // namespace

double ChartAxis::Part(FixedPoint value) const {
  const double span = static_cast<double>(high) - static_cast<double>(low);
  return span > 0 ? (static_cast<double>(value) - static_cast<double>(low)) / span : 0;
}

ChartAxis MakeAxis(FixedPoint least, FixedPoint greatest, bool times, bool whole, int most) {
  ChartAxis axis{least, greatest, {}};
  // Of a single value the axis runs from zero.
  if (least == greatest) {
    axis.low = std::min<FixedPoint>(least, 0);
    axis.high = least == 0 ? kUnit : std::max<FixedPoint>(greatest, 0);
  }
  const std::int64_t step = StepFor(axis.low, axis.high, times, whole, most);
  FixedPoint tick = axis.low / step * step;
  FixedPoint below = 0;
  if (tick > axis.low && !__builtin_sub_overflow(tick, step, &below)) tick = below;
  axis.low = std::min(axis.low, tick);
  while (true) {
    axis.ticks.push_back(tick);
    if (tick >= axis.high || __builtin_add_overflow(tick, step, &tick)) break;
  }
  axis.high = std::max(axis.high, axis.ticks.back());
  return axis;
}

ChartAxis AxisOf(const ChartModel& chart, ChartKind kind, const std::vector<bool>& shown,
                 int most) {
  Extent extent;
  if (kind == ChartKind::kStackedBars) {
    const ChartHeaps heaps = HeapsOf(chart, shown);
    extent.Add(heaps.low);
    extent.Add(heaps.high);
  } else {
    for (std::size_t i = 0; i < chart.series.size(); ++i) {
      if (shown[i]) extent.Add(chart.series[i].values);
    }
  }
  if (kind != ChartKind::kLines || !extent.least) extent.Add(0);
  return MakeAxis(*extent.least, *extent.greatest, chart.times, extent.whole, most);
}

}  // namespace vorek
