#include "totals/group_reports.h"

#include <algorithm>
#include <iterator>

namespace vorek {
namespace {

constexpr GroupReport kReports[] = {
    {2844, 11, 0, 0, 0, {11, 12, 16, 17}, {}},
    {2847, 5, 0, 0, 0, {5, 6, 9, 10}, {}},
    {2851, 4, 2, 0, 1, {8, 9, 10, 11}, {4, 5, 6, 7}},
    {2852, 7, 3, 3, 4, {8, 9, 10, 11}, {}},
    {2853, 7, 3, 3, 4, {12, 13, 14, 15}, {8, 9, 10, 11}},
    {2857, 4, 2, 0, 1, {4, 5, 6, 7}, {}},
    {2858, 10, 2, 14, 7, {10, 11, 12, 13}, {}},
    {2859, 10, 2, 14, 7, {16, 17, 18, 19}, {10, 11, 12, 13}},
};

// From a group column to its companions, all to one side of it.
struct Companions {
  std::int32_t report_id;
  std::int32_t column;
  std::int32_t step;  // to the right or to the left
  std::int32_t count;
};

// A code beside its name, or the levels above.
constexpr Companions kCompanions[] = {
    {2844, 1, 1, 1},  {2844, 6, 1, 1},  {2844, 8, 1, 1},  {2844, 5, -1, 1}, {2844, 7, -1, 1},
    {2844, 9, -1, 1}, {2847, 1, 1, 1},  {2852, 1, 1, 1},  {2852, 3, 1, 1},  {2852, 2, -1, 1},
    {2852, 4, -1, 3}, {2853, 1, 1, 1},  {2853, 3, 1, 1},  {2853, 2, -1, 1}, {2853, 4, -1, 3},
    {2858, 1, 1, 1},  {2858, 3, 1, 1},  {2858, 5, 1, 1},  {2858, 2, -1, 1}, {2858, 4, -1, 1},
    {2858, 6, -1, 1}, {2858, 7, -1, 5}, {2859, 1, 1, 1},  {2859, 3, 1, 1},  {2859, 5, 1, 1},
    {2859, 2, -1, 1}, {2859, 4, -1, 1}, {2859, 6, -1, 1}, {2859, 7, -1, 5},
};

}  // namespace

const GroupReport* FindGroupReport(std::int32_t report_id) {
  const auto* const found =
      std::find_if(std::begin(kReports), std::end(kReports),
                   [&](const GroupReport& report) { return report.id == report_id; });
  return found == std::end(kReports) ? nullptr : found;
}

std::int32_t LastColumnOf(const GroupReport& report) {
  std::int32_t last = report.sort_column;
  for (const auto* columns : {&report.amounts, &report.more_added}) {
    last = std::max(last, *std::max_element(columns->begin(), columns->end()));
  }
  return last;
}

std::vector<std::int32_t> CompanionColumns(std::int32_t report_id, std::int32_t group_column) {
  std::vector<std::int32_t> columns;
  for (const Companions& row : kCompanions) {
    if (row.report_id != report_id || row.column != group_column) continue;
    for (std::int32_t i = 1; i <= row.count; ++i) columns.push_back(group_column + i * row.step);
  }
  return columns;
}

}  // namespace vorek
