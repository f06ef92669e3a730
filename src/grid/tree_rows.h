#ifndef VOREK_GRID_TREE_ROWS_H_
#define VOREK_GRID_TREE_ROWS_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include "catalog/recordset.h"
#include "grid/report_context.h"
#include "grid/undrawn_pass.h"

// A result as a tree in flxMain. The grid holds the open part alone; what is open is told by the
// mark at the end of column 0: "+" closed, "-" open, neither without children.
namespace vorek {

// Numbers the rows of the first level, with a "+" behind those that have children in the result
// that the level was taken from. REQUIRES: the recordset is open.
void MarkTopRows(ReportContext& report, const Recordset& result);

// Opens closed rows by one run of the report's query, which the constructor starts; nothing in the
// grid has changed if it fails or is cancelled. Nothing is drawn before the last row is open.
class TreeExpansion {
 public:
  explicit TreeExpansion(ReportContext& report);
  ~TreeExpansion();

  // Puts the row's children under it, a shade paler. REQUIRES: the row is closed.
  void Expand(std::int32_t row);

 private:
  class Result;

  UndrawnPass pass_;
  std::unique_ptr<Result> result_;
};

// Opens a closed row, by a run of the query. Closes an open one: takes all that stands below it out
// of the grid; false if it's closed.
void ExpandTreeRow(ReportContext& report, std::int32_t row);
bool CollapseTreeRow(ReportContext& report, std::int32_t row);

// Makes the calculated columns anew once rows were opened or closed.
void MakeCalculatedColumns(ReportContext& report);

// A click on column 0 of a row, or a key on it: opens or closes the row by its mark and makes the
// calculated columns anew. True if the row has a mark.
bool ClickTreeMark(ReportContext& report, std::int32_t row);

// The mark of the row: '+', '-' or another last character; '\0' for an empty text.
char TreeMark(const Grid& grid, std::int32_t row);

// A colour one step of 20 paler in each byte for a positive step, darker for a negative one.
std::int32_t ShadeColor(std::int32_t color, std::int32_t step);

// The outline level of a header's text: 1 for a plain number, else the "-" behind the first
// character plus 1.
std::int32_t TreeLevel(std::string_view text);

}  // namespace vorek

#endif  // VOREK_GRID_TREE_ROWS_H_
