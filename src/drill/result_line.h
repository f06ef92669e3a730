#ifndef VOREK_DRILL_RESULT_LINE_H_
#define VOREK_DRILL_RESULT_LINE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/report_context.h"

// What the line under a report tells of its result.
namespace vorek {

struct ResultLine {
  // How many rows are shown, and of how many if not of all; empty for no result.
  std::string counts;
  std::string filter;                  // in force; empty for none
  std::vector<std::int32_t> filtered;  // the columns of flxMain that it asks for
};

ResultLine TellResult(ReportContext& report);

// The filter that the user has set, "" for none. A tree has none: it filters its levels itself.
std::string FilterInForce(ReportContext& report);

// The rows of a grid that can be seen by scrolling, without the fixed and the summary rows. Goes
// through all of them.
std::int32_t RowsOnShow(const Grid& grid);

}  // namespace vorek

#endif  // VOREK_DRILL_RESULT_LINE_H_
