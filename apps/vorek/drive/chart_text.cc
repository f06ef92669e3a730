#include "drive/chart_text.h"

#include "chart/chart_axis.h"
#include "chart/chart_shares.h"
#include "chart_kinds.h"
#include "drive/words.h"
#include "vorek/error.h"

namespace vorek::drive {
namespace {

constexpr int kTicks = 6;
constexpr std::size_t kShares = 10;

ChartKind KindOf(const std::string& word) {
  const std::map<std::string, ChartKind>& kinds = ChartKindsByName();
  const auto found = kinds.find(word);
  if (found != kinds.end()) return found->second;
  throw Error(ErrorNumber::kInvalidCall, "no kind of chart is called " + word);
}

std::vector<std::string> ShareLines(const ChartModel& chart) {
  std::vector<std::string> lines = {chart.category_title + "\t" + chart.series[0].name};
  for (const ChartShare& share : SharesOf(chart, 0, kShares)) {
    lines.push_back(share.name + "\t" + chart.Text(share.total) + "\t" + PercentText(share.part));
  }
  return lines;
}

std::vector<std::string> ValueLines(const ChartModel& chart) {
  std::vector<std::string> lines = {chart.category_title};
  for (const ChartSeries& series : chart.series) lines[0] += "\t" + series.name;
  for (std::size_t at = 0; at < chart.categories.size(); ++at) {
    lines.push_back(chart.categories[at]);
    for (const ChartSeries& series : chart.series) {
      const ChartValue value = series.values[at];
      lines.back() += "\t" + (value ? chart.Text(*value) : "");
    }
  }
  return lines;
}

std::string AxisLine(const ChartModel& chart, ChartKind kind) {
  const std::vector<bool> all(chart.series.size(), true);
  std::string line = "axis " + Quote(chart.value_title);
  for (const FixedPoint tick : AxisOf(chart, kind, all, kTicks).ticks) {
    line += " " + chart.Text(tick);
  }
  return line;
}

}  // namespace

std::vector<std::string> ChartLines(const ChartModel& chart, const std::string& kind) {
  const ChartKind chosen = KindOf(kind);
  const std::string refusal = chart.Refusal(chosen);
  if (!refusal.empty()) return {"refused " + Quote(refusal)};
  const bool shares = chosen == ChartKind::kShares;
  std::vector<std::string> lines = shares ? ShareLines(chart) : ValueLines(chart);
  lines.insert(lines.begin(), "chart " + kind + " " + Quote(chart.title));
  if (!shares) lines.push_back(AxisLine(chart, chosen));
  if (!chart.note.empty()) lines.push_back("note " + Quote(chart.note));
  return lines;
}

}  // namespace vorek::drive
