#ifndef VOREK_TOTALS_SUMMED_COLUMN_H_
#define VOREK_TOTALS_SUMMED_COLUMN_H_

#include <cstdint>
#include <string>

#include "grid/grid.h"
#include "state/report_state.h"

// How the texts of a grid's column become numbers that are added up, and a total a text again.
namespace vorek {

enum class SummedKind { kPlain, kMoney, kTime };

// A calculated column counts as money.
SummedKind SummedKindOf(const ReportState& state, std::int32_t column);

// What a cell counts in a total, in ten-thousandths. Throws Error(kOverflow).
std::int64_t CountedInTotal(const Grid& grid, std::int32_t row, std::int32_t column,
                            SummedKind kind);

// A total's plain text (FixedTotal::Text) as a sum row shows it.
std::string TotalText(const std::string& plain, SummedKind kind);

}  // namespace vorek

#endif  // VOREK_TOTALS_SUMMED_COLUMN_H_
