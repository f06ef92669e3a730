#ifndef VOREK_GRID_SUMMARY_LABEL_H_
#define VOREK_GRID_SUMMARY_LABEL_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/grid.h"

// The rows at a grid's end that total or average its columns are told by their label in column 0
// alone.
namespace vorek {

constexpr std::string_view kSumLabel = "مجموع";
constexpr std::string_view kAverageLabel = "ميانگين";

// Whether column 0 of the row reads exactly so.
bool HasLabel(const Grid& grid, std::int32_t row, std::string_view label);

// Whether the row is one of those rows.
bool IsSummaryRow(const Grid& grid, std::int32_t row);

// How many of them stand one behind the other at the grid's end, 0 to 4. Looks at the last few rows
// alone.
std::int32_t TrailingSummaryRows(const Grid& grid);

// Takes every sum row out of the grid; gives the texts of the last of them from column 0 on, none
// if there was none.
std::vector<std::string> TakeSumRowsOut(Grid& grid);

// Puts a sum row with these texts at the end, as the current row.
void PutSumRowLast(Grid& grid, const std::vector<std::string>& texts);

// Makes the row the current one, bold and raised.
void Emphasise(Grid& grid, std::int32_t row);

}  // namespace vorek

#endif  // VOREK_GRID_SUMMARY_LABEL_H_
