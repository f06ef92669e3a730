#ifndef VOREK_SHEET_CHART_H_
#define VOREK_SHEET_CHART_H_

#include <string>
#include <vector>

#include "vorek/chart_kind.h"

namespace vorek {

// A chart that the office program draws by itself, from numbers that stand beside it. Texts are
// UTF-8 and shown as they are.
struct SheetChart {
  struct Series {
    std::string name;
    // One a category: a plain number (IsSheetNumber), or nothing for a gap.
    std::vector<std::string> values;
  };

  ChartKind kind = ChartKind::kBars;
  std::string sheet;  // the name of the sheet that it stands on
  std::string title;
  std::string category_title;
  std::string value_title;    // may be empty
  std::string number_format;  // of the values, as the office format writes it: "#,##0"
  std::vector<std::string> categories;
  std::vector<Series> series;  // shares show the first one
};

}  // namespace vorek

#endif  // VOREK_SHEET_CHART_H_
