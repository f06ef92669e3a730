#ifndef VOREK_TESTS_SUPPORT_STEPS_QUICK_FIND_H_
#define VOREK_TESTS_SUPPORT_STEPS_QUICK_FIND_H_

#include <string>

#include "grid/report_context.h"
#include "text/cell_text.h"
#include "text/utf8.h"

// Quick search. A plain reading of the rules, cell text by cell text: slow, and used by nothing but
// tests, which hold the real pass against it.
namespace vorek::steps {

// What a person takes for the same as one text.
inline std::string Alike(std::string text) {
  const char* const kPairs[][2] = {{"ي", "ی"}, {"ك", "ک"}};
  for (const auto& pair : kPairs) text = text::Replace(text, pair[0], pair[1]);
  const std::string digits[] = {"٠١٢٣٤٥٦٧٨٩", "۰۱۲۳۴۵۶۷۸۹"};
  for (const std::string& script : digits) {
    for (std::size_t i = 1; i <= 10; ++i) {
      text = text::Replace(text, text::Mid(script, i, 1), std::to_string(i - 1));
    }
  }
  return text::ToLower(text);
}

inline bool QuickFind(ReportContext& report, const std::string& text, std::int32_t column) {
  ReportState& state = report.state;
  Grid& grid = report.flxMain;
  if (text.empty()) return false;
  if (column == -1) column = state.LastSearchColumn;
  std::int32_t start = 1;
  if (text != state.LastSearchText) state.LastSearchColumn = -1;
  state.LastSearchText = text;
  if (column < 1 || column > grid.Cols() - 1) return false;
  if (column != state.LastSearchColumn) {
    state.LastSearchColumn = column;
  } else {
    start = grid.Row() == grid.Rows() - 1 ? 1 : grid.Row() + 1;
  }
  for (std::int32_t i = start; i <= grid.Rows() - 1; ++i) {
    const std::string cell = UnformatNumber(grid.TextMatrix(i, column));
    if (!text::Contains(Alike(cell), Alike(text))) continue;
    grid.SetRow(i);
    grid.SetCol(1);
    grid.SetColSel(grid.Cols() - 1);
    grid.SetTopRow(i);
    return true;
  }
  grid.SetRow(grid.Rows() - 1);
  grid.SetCol(1);
  grid.SetColSel(grid.Cols() - 1);
  report.process.windows().Beep(2000, 100);
  return false;
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_QUICK_FIND_H_
