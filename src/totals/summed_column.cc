#include "totals/summed_column.h"

#include "text/cell_text.h"
#include "text/number.h"
#include "totals/fixed_total.h"

namespace vorek {

SummedKind SummedKindOf(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  if (field >= state.QueryFields.size()) return SummedKind::kMoney;
  const FieldInfo& info = state.QueryFields[field];
  if (IsMoneyField(info.type)) return SummedKind::kMoney;
  return IsTimeColumn(info.type, info.name) ? SummedKind::kTime : SummedKind::kPlain;
}

std::int64_t CountedInTotal(const Grid& grid, std::int32_t row, std::int32_t column,
                            SummedKind kind) {
  if (kind != SummedKind::kTime) return grid.CellFixed(row, column);
  std::string scratch;
  return TimeToMinutes(grid.CellView(row, column, scratch)) * std::int64_t{10000};
}

std::string TotalText(const std::string& plain, SummedKind kind) {
  switch (kind) {
    case SummedKind::kMoney:
      return MoneyOfTotal(plain);
    case SummedKind::kTime:
      return MinutesToTime(static_cast<std::int64_t>(text::NumericPrefix(plain)));
    case SummedKind::kPlain:
      break;
  }
  return plain;
}

}  // namespace vorek
