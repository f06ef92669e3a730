#include "totals/group_totals.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "grid/expression_columns.h"
#include "grid/scaled_sort.h"
#include "grid/summary_label.h"
#include "grid/undrawn_pass.h"
#include "totals/fixed_total.h"
#include "totals/group_reports.h"

namespace vorek {
namespace {

constexpr std::int32_t kGenericAscending = 1;  // kinds of sort
constexpr std::int32_t kNumberAscending = 3;
constexpr std::string_view kTitle = "سر جمع ";

// A run of rows with one key, from the first to the one before the end.
struct Group {
  std::int32_t first = 0;
  std::int32_t end = 0;
  std::array<FixedTotal, 2> amounts;     // debit and credit
  std::array<FixedTotal, 4> more_added;  // where the report has them
};

class GroupTotals {
 public:
  GroupTotals(ReportContext& report, const GroupReport& shape)
      : report_(report),
        grid_(report.flxMain),
        shape_(shape),
        column_(grid_.Col()),
        companions_(CompanionColumns(shape.id, column_)) {}

  bool Applies() const {
    return grid_.Cols() >= 3 && column_ >= 1 && column_ < shape_.limit && grid_.Rows() > 1 &&
           !grid_.TextMatrix(1, 1).empty();
  }

  // Throws Error(kSubscript) if the report hasn't the columns that its subtotals need.
  void CheckColumns() const {
    const std::int32_t last = LastColumnOf(shape_);
    const auto fields = static_cast<std::int32_t>(report_.state.QueryFields.size());
    if (last <= fields) return;
    throw Error(ErrorNumber::kSubscript, "گزارش " + std::to_string(shape_.id) + " براي سرجمع به " +
                                             std::to_string(last) + " ستون نياز دارد و " +
                                             std::to_string(fields) + " ستون دارد.");
  }

  // Throws Error(kCancelled) while nothing has been changed.
  void SortRows() {
    const std::int32_t column = shape_.sort_column > 0 ? shape_.sort_column : column_;
    const int type = report_.state.QueryFields[static_cast<std::size_t>(column) - 1].type;
    grid_.SetCol(column);
    grid_.Sort(NeedsScaling(grid_, column, type) ? kNumberAscending : kGenericAscending);
  }

  void Add(bool keep_detail) {
    grid_.SetCols(static_cast<std::int32_t>(report_.state.QueryFields.size()) + 1);
    MakeExpressionColumns(report_);
    const std::vector<Group> groups = AddGroups();
    const std::int32_t rows = grid_.Rows();
    grid_.InsertRows(rows, static_cast<std::int32_t>(groups.size()));
    for (std::size_t i = 0; i < groups.size(); ++i) {
      WriteSubtotal(rows + static_cast<std::int32_t>(i), groups[i]);
    }
    grid_.Rearrange(PutBelowGroups(rows, groups));
    if (!keep_detail) DropDetail();
    Emphasise(grid_, grid_.Rows() - 1);
  }

 private:
  std::vector<Group> AddGroups() const {
    std::vector<Group> groups;
    const std::vector<bool> changes = grid_.Changes(column_);
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      if (row == 1 || changes[static_cast<std::size_t>(row)]) groups.push_back({row, row, {}, {}});
      Group& group = groups.back();
      group.end = row + 1;
      Count(row, shape_.amounts, group.amounts);
      Count(row, shape_.more_added, group.more_added);
    }
    return groups;
  }

  // What isn't a number counts 0.
  template <std::size_t kTotals>
  void Count(std::int32_t row, const std::array<std::int32_t, 4>& columns,
             std::array<FixedTotal, kTotals>& totals) const {
    for (std::size_t i = 0; i < kTotals; ++i) {
      if (columns[i] > 0) totals[i].Add(grid_.CellFixed(row, columns[i]));
    }
  }

  void WriteSubtotal(std::int32_t row, const Group& group) {
    const std::string key = grid_.TextMatrix(group.first, column_);
    grid_.WriteCell(row, column_ + shape_.to_title,
                    std::string(kTitle) + grid_.TextMatrix(0, column_) + ": " + key);
    if (shape_.to_title > 0) grid_.WriteCell(row, column_, key);
    for (const std::int32_t column : companions_) {
      grid_.WriteCell(row, column, grid_.TextMatrix(group.first, column));
    }
    WriteAmounts(row, group);
    Emphasise(grid_, row);
  }

  // The balances are those of the subtotal's own two amounts.
  void WriteAmounts(std::int32_t row, const Group& group) {
    const auto& [debit, credit] = group.amounts;
    FixedTotal balance = debit.AsShown();
    balance.Add(credit.AsShown().Negated());
    const bool on_debit = !balance.IsNegative() && !balance.IsZero();
    Write(row, shape_.amounts[0], debit);
    Write(row, shape_.amounts[1], credit);
    Write(row, shape_.amounts[2], on_debit ? balance : FixedTotal());
    Write(row, shape_.amounts[3], on_debit ? FixedTotal() : balance.Negated());
    for (std::size_t i = 0; i < shape_.more_added.size(); ++i) {
      if (shape_.more_added[i] > 0) Write(row, shape_.more_added[i], group.more_added[i]);
    }
  }

  void Write(std::int32_t row, std::int32_t column, const FixedTotal& total) {
    grid_.WriteCell(row, column, MoneyOfTotal(total.Text()));
  }

  // The subtotals stand behind all rows and go below their groups, in one move.
  static std::vector<std::int32_t> PutBelowGroups(std::int32_t rows,
                                                  const std::vector<Group>& groups) {
    std::vector<std::int32_t> order = {0};
    order.reserve(static_cast<std::size_t>(rows) + groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i) {
      for (std::int32_t row = groups[i].first; row < groups[i].end; ++row) order.push_back(row);
      order.push_back(rows + static_cast<std::int32_t>(i));
    }
    return order;
  }

  void DropDetail() {
    std::vector<std::int32_t> kept = {0};
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      if (TellsSubtotal(grid_, row)) kept.push_back(row);
    }
    grid_.KeepRows(kept);
  }

  ReportContext& report_;
  Grid& grid_;
  const GroupReport& shape_;
  std::int32_t column_;
  std::vector<std::int32_t> companions_;
};

// Sorted rows without sum rows, whose texts it gives. A sort that is cancelled has them again.
std::vector<std::string> Prepare(Grid& grid, GroupTotals& totals) {
  const std::vector<std::string> sum = TakeSumRowsOut(grid);
  try {
    if (grid.Rows() > 1) totals.SortRows();
  } catch (const std::exception&) {
    if (!sum.empty()) PutSumRowLast(grid, sum);
    throw;
  }
  return sum;
}

}  // namespace

void MakeGroupTotals(ReportContext& report, bool keep_detail, bool prepare) {
  const GroupReport* const shape = FindGroupReport(report.state.ReportID);
  if (shape == nullptr) return;
  Grid& grid = report.flxMain;
  GroupTotals totals(report, *shape);
  if (!totals.Applies()) return;
  totals.CheckColumns();
  const UndrawnPass pass(report);
  std::vector<std::string> sum;
  if (prepare) sum = Prepare(grid, totals);
  const PassWatch::Unbroken rows_have_moved(report.process.watch);
  if (grid.Rows() > 1) totals.Add(keep_detail);
  if (!sum.empty()) PutSumRowLast(grid, sum);
}

void MakeFirstGroupTotals(ReportContext& report) {
  const GroupReport* const shape = FindGroupReport(report.state.ReportID);
  if (shape == nullptr || shape->group_at_first == 0) return;
  report.flxMain.SetCol(shape->group_at_first);
  MakeGroupTotals(report, true, false);
}

bool TellsSubtotal(const Grid& grid, std::int32_t row) {
  return !grid.IsNumbered(row) && HasLabel(grid, row, "");
}

bool DropGroupTotals(Grid& grid) {
  std::vector<std::int32_t> kept = {0};
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    if (!TellsSubtotal(grid, row)) kept.push_back(row);
  }
  const bool all = static_cast<std::int32_t>(kept.size()) == grid.Rows();
  const bool numbered = kept.size() > 1 && !IsSummaryRow(grid, kept[1]);
  if (all) return true;
  if (!numbered) return false;
  grid.KeepRows(kept);
  return true;
}

}  // namespace vorek
