#include "chart/chart_model.h"

namespace vorek {
namespace {

std::string Quoted(const std::string& name) { return "«" + name + "»"; }

FixedTotal TotalOf(FixedPoint value) {
  FixedTotal total;
  total.Add(value);
  return total;
}

// Where a sum of one sign doesn't fit; none of a heap of fewer series is larger.
std::string RefusalOfHeaps(const ChartModel& chart) {
  for (std::size_t at = 0; at < chart.categories.size(); ++at) {
    FixedPoint low = 0;
    FixedPoint high = 0;
    for (const ChartSeries& series : chart.series) {
      const FixedPoint value = series.values[at].value_or(0);
      FixedPoint& heap = value < 0 ? low : high;
      if (__builtin_add_overflow(heap, value, &heap)) {
        return "جمع مقدارهاي " + Quoted(chart.categories[at]) +
               " بزرگتر از آن است که روي هم رسم شود.";
      }
    }
  }
  return {};
}

std::string RefusalOfShares(const ChartModel& chart, const ChartSeries& series) {
  FixedTotal total;
  for (std::size_t at = 0; at < series.values.size(); ++at) {
    const FixedPoint value = series.values[at].value_or(0);
    if (value < 0) {
      return "نمودار سهم مقدار منفي را نشان نمي دهد: " + Quoted(series.name) + "، " +
             Quoted(chart.categories[at]) + ": " + chart.Text(value);
    }
    total.Add(value);
  }
  return total.IsZero() ? "جمع " + Quoted(series.name) + " صفر است و سهمي ندارد." : "";
}

}  // namespace

std::string ChartModel::Text(FixedPoint value) const { return Text(TotalOf(value)); }

// A value between -1 and 0 too: on an axis it stands below zero.
std::string ChartModel::Text(const FixedTotal& total) const {
  const std::string plain = (total.IsNegative() ? total.Negated() : total).Text();
  const std::string text =
      times ? MinutesToTime(std::stoll(plain.substr(0, plain.find('.')))) : MoneyOfTotal(plain);
  return total.IsNegative() ? "(" + text + ")" : text;
}

std::string ChartModel::Refusal(ChartKind kind, std::size_t shared) const {
  if (!refusal.empty() || series.empty()) return refusal;
  if (kind == ChartKind::kStackedBars) return RefusalOfHeaps(*this);
  if (kind == ChartKind::kShares) return RefusalOfShares(*this, series.at(shared));
  return {};
}

ChartHeaps HeapsOf(const ChartModel& chart, const std::vector<bool>& shown) {
  ChartHeaps heaps;
  heaps.low.resize(chart.categories.size());
  heaps.high.resize(chart.categories.size());
  for (std::size_t i = 0; i < chart.series.size(); ++i) {
    if (!shown[i]) continue;
    for (std::size_t at = 0; at < chart.categories.size(); ++at) {
      const ChartValue value = chart.series[i].values[at];
      if (!value) continue;
      ChartValue& heap = *value < 0 ? heaps.low[at] : heaps.high[at];
      heap = heap.value_or(0) + *value;
    }
  }
  return heaps;
}

}  // namespace vorek
