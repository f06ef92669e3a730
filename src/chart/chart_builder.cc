#include "chart/chart_builder.h"

#include <algorithm>
#include <utility>

#include "chart/chart_reader.h"

namespace vorek {
namespace {

void AddSentence(std::string& text, const std::string& sentence) {
  if (!text.empty()) text += " ";
  text += sentence;
}

}  // namespace

void ChartBuilder::Take(const ChartCell& cell, const std::string& series,
                        const std::string& category, std::vector<ChartValue>& values) {
  values.push_back(cell.value);
  rounded_ = rounded_ || cell.rounded;
  if (cell.beyond && chart_.refusal.empty()) {
    chart_.refusal = "مقدار «" + series + "»، «" + category + "» را نمي توان رسم كرد.";
  }
}

void ChartBuilder::Add(std::string name, FigureKind kind, std::vector<ChartValue> values) {
  const auto has_value = [](const ChartValue& value) { return value.has_value(); };
  if (std::none_of(values.begin(), values.end(), has_value)) return;
  const bool times = kind == FigureKind::kTime;
  if (chart_.series.empty()) chart_.times = times;
  if (times != chart_.times) return LeaveOut(std::move(name));
  if (++series_ > kMostChartSeries) return;
  chart_.series.push_back({std::move(name), std::move(values)});
}

void ChartBuilder::LeaveOut(std::string name) {
  if (mixed_.empty()) mixed_ = std::move(name);
}

void ChartBuilder::Finish() {
  if (chart_.series.empty() && chart_.refusal.empty()) {
    chart_.refusal = "عددي براي رسم نمودار نيست.";
  }
  if (series_ > kMostChartSeries) {
    AddSentence(chart_.note, std::to_string(kMostChartSeries) + " سري نخست از " +
                                 std::to_string(series_) + " سري رسم شده است.");
  }
  if (!mixed_.empty()) {
    AddSentence(chart_.note, "«" + mixed_ + "» رسم نشده است: ساعت و عدد محور مشترک ندارند.");
  }
  if (rounded_) AddSentence(chart_.note, "مقدارها تا چهار رقم اعشار گرد شده اند.");
}

}  // namespace vorek
