#ifndef VOREK_CHART_CHART_MODEL_H_
#define VOREK_CHART_CHART_MODEL_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "text/cell_text.h"
#include "totals/fixed_total.h"
#include "vorek/chart_kind.h"

namespace vorek {

// A value in ten-thousandths, of minutes where the chart shows times; none where a cell shows none.
using ChartValue = std::optional<FixedPoint>;

struct ChartSeries {
  std::string name;
  std::vector<ChartValue> values;  // one a category
};

// What a chart shows, whatever its kind: values of series over categories. See chart_reader.h for
// how it is chosen from a report.
struct ChartModel {
  std::string title;
  std::string category_title;
  std::string value_title;  // what all values are; "" where each series says it of itself
  std::vector<std::string> categories;
  std::vector<ChartSeries> series;
  bool times = false;
  bool cross_table = false;  // its categories and series can change places
  std::string refusal;       // why there is nothing to show; "" if there is
  std::string note;          // what the chart doesn't show of what it was asked to; "" for nothing

  // A value as the grid shows it: with digit groups, or as a time; a negative one in parentheses.
  std::string Text(FixedPoint value) const;
  std::string Text(const FixedTotal& total) const;
  // Why it can't be shown as that kind, shares by the series `shared`; "" if it can.
  std::string Refusal(ChartKind kind, std::size_t shared = 0) const;
};

// The heaps of a stacked chart: for each category the sums of its values below and above zero, in
// the series that `shown` has on. REQUIRES: Refusal(kStackedBars) is empty.
struct ChartHeaps {
  std::vector<ChartValue> low;
  std::vector<ChartValue> high;
};
ChartHeaps HeapsOf(const ChartModel& chart, const std::vector<bool>& shown);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_MODEL_H_
