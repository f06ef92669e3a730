#ifndef VOREK_TOTALS_QUICK_FIND_H_
#define VOREK_TOTALS_QUICK_FIND_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

namespace vorek {

// Moves the grid on view to the next row whose cell in the column holds the text (see CellSearch);
// column -1 is the one that was searched last. Another text or column is searched from row 1, the
// same again below the current row, or from row 1 if that is the last one. Without a hit the last
// row becomes the current one, with a beep. Nothing is done for an empty text and for a column that
// isn't there. In a cross table hidden rows are passed over. True if a row was found.
bool QuickFind(ReportContext& report, const std::string& text, std::int32_t column);

}  // namespace vorek

#endif  // VOREK_TOTALS_QUICK_FIND_H_
