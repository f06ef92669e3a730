#ifndef VOREK_TOTALS_GROUP_REPORTS_H_
#define VOREK_TOTALS_GROUP_REPORTS_H_

#include <array>
#include <cstdint>
#include <vector>

namespace vorek {

// What is known of the columns of a ledger report that shows subtotals: the catalogue doesn't tell.
// Columns are those of the grid, from 1.
struct GroupReport {
  std::int32_t id;
  std::int32_t limit;                      // the rows are grouped by a column below it
  std::int32_t to_title;                   // from there to the column of the subtotal's title
  std::int32_t sort_column;                // 0 for the one that the rows are grouped by
  std::int32_t group_at_first;             // the column that a run groups by at once, 0 for none
  std::array<std::int32_t, 4> amounts;     // debit, credit and the balance of either side
  std::array<std::int32_t, 4> more_added;  // further columns that are added; 0 for none
};

// Null for a report without subtotals.
const GroupReport* FindGroupReport(std::int32_t report_id);

// The last column that the amounts and the sort of a report need.
std::int32_t LastColumnOf(const GroupReport& report);

// The columns that keep in a subtotal the text of the group's rows.
std::vector<std::int32_t> CompanionColumns(std::int32_t report_id, std::int32_t group_column);

}  // namespace vorek

#endif  // VOREK_TOTALS_GROUP_REPORTS_H_
