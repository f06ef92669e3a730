#include "chart/chart_shares.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorek {
namespace {

// The places of the categories that have a part, the largest first.
std::vector<std::size_t> BySize(const std::vector<ChartValue>& values) {
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < values.size(); ++at) {
    if (values[at].value_or(0) > 0) places.push_back(at);
  }
  std::stable_sort(places.begin(), places.end(),
                   [&](std::size_t a, std::size_t b) { return *values[a] > *values[b]; });
  return places;
}

void JoinRest(const std::vector<ChartValue>& values, const std::vector<std::size_t>& places,
              std::size_t from, std::vector<ChartShare>& shares) {
  ChartShare rest;
  for (std::size_t i = from; i < places.size(); ++i) rest.total.Add(*values[places[i]]);
  rest.name = "ساير (" + std::to_string(places.size() - from) + ")";
  shares.push_back(std::move(rest));
}

}  // namespace

std::vector<ChartShare> SharesOf(const ChartModel& chart, std::size_t series, std::size_t most) {
  const std::vector<ChartValue>& values = chart.series.at(series).values;
  const std::vector<std::size_t> places = BySize(values);
  const std::size_t own = places.size() > most ? most - 1 : places.size();
  std::vector<ChartShare> shares;
  FixedTotal whole;
  for (const std::size_t at : places) whole.Add(*values[at]);
  for (std::size_t i = 0; i < own; ++i) {
    shares.push_back({chart.categories[places[i]], {}, 0});
    shares.back().total.Add(*values[places[i]]);
  }
  if (own < places.size()) JoinRest(values, places, own, shares);
  for (ChartShare& share : shares) share.part = share.total.Value() / whole.Value();
  return shares;
}

std::string PercentText(double part) {
  const auto thousandths = std::lround(part * 1000);
  return std::to_string(thousandths / 10) + "." + std::to_string(thousandths % 10) + "%";
}

}  // namespace vorek
