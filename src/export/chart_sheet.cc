#include "export/chart_sheet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "chart/chart_shares.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"

namespace vorek {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kInvalidCall, reason);
}

// As short as the number can be told: a workbook reads the same one.
std::string ShortestText(double number) {
  std::array<char, 32> buffer{};
  char* const begin = buffer.data();
  return std::string(begin, std::to_chars(begin, begin + buffer.size(), number).ptr);
}

// A total as a cell holds it.
std::string CellOf(const ChartModel& chart, const FixedTotal& total, const std::string& category) {
  constexpr double kMinutesOfDay = 1440;
  if (chart.times) return ShortestText(total.Value() / kMinutesOfDay);
  std::string text = total.Text();
  if (!IsSheetNumber(text)) {
    Refuse("مقدار «" + category +
           "» بيش از ۱۵ رقم دارد و در برگه اكسل جا نمي گيرد: " + chart.Text(total));
  }
  return text;
}

// The most decimals that a value has.
std::size_t DecimalsOf(const SheetChart& sheet) {
  std::size_t most = 0;
  for (const SheetChart::Series& series : sheet.series) {
    for (const std::string& value : series.values) {
      const std::size_t point = value.find('.');
      if (point != std::string::npos) most = std::max(most, value.size() - point - 1);
    }
  }
  return most;
}

std::string NumberFormatOf(const ChartModel& chart, const SheetChart& sheet) {
  if (chart.times) return "[hh]:mm";
  const std::size_t decimals = DecimalsOf(sheet);
  const std::string format = "#,##0" + (decimals == 0 ? "" : "." + std::string(decimals, '0'));
  return format + ";(" + format + ")";
}

bool Shows(const std::vector<bool>& shown, std::size_t place) {
  return place >= shown.size() || shown[place];
}

void AddSeries(const ChartModel& chart, const std::vector<bool>& shown, SheetChart& sheet) {
  sheet.categories = chart.categories;
  for (std::size_t i = 0; i < chart.series.size(); ++i) {
    if (!Shows(shown, i)) continue;
    SheetChart::Series series = {chart.series[i].name, {}};
    series.values.reserve(chart.categories.size());
    for (std::size_t at = 0; at < chart.categories.size(); ++at) {
      FixedTotal total;
      const ChartValue value = chart.series[i].values[at];
      total.Add(value.value_or(0));
      series.values.push_back(value ? CellOf(chart, total, chart.categories[at]) : "");
    }
    sheet.series.push_back(std::move(series));
  }
}

void AddShares(const ChartModel& chart, const std::vector<bool>& shown, std::size_t shared,
               SheetChart& sheet) {
  SheetChart::Series parts = {chart.series.at(shared).name, {}};
  const std::vector<ChartShare> shares = SharesOf(chart, shared, kMostShares);
  for (std::size_t i = 0; i < shares.size(); ++i) {
    if (!Shows(shown, i)) continue;
    sheet.categories.push_back(shares[i].name);
    parts.values.push_back(CellOf(chart, shares[i].total, shares[i].name));
  }
  sheet.series.push_back(std::move(parts));
}

}  // namespace

SheetChart SheetChartOf(const ChartModel& chart, ChartKind kind, const std::vector<bool>& shown,
                        std::size_t shared) {
  const std::string refusal = chart.Refusal(kind, shared);
  if (!refusal.empty()) Refuse(refusal);
  SheetChart sheet;
  sheet.kind = kind;
  sheet.sheet = "نمودار";
  sheet.title = chart.title;
  sheet.category_title = chart.category_title;
  sheet.value_title = chart.value_title;
  if (kind == ChartKind::kShares) {
    AddShares(chart, shown, shared, sheet);
  } else {
    AddSeries(chart, shown, sheet);
  }
  if (sheet.series.empty() || sheet.categories.empty()) Refuse("در نمودار چيزي نشان داده نمي شود.");
  sheet.number_format = NumberFormatOf(chart, sheet);
  return sheet;
}

}  // namespace vorek
