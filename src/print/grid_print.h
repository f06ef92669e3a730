#ifndef VOREK_PRINT_GRID_PRINT_H_
#define VOREK_PRINT_GRID_PRINT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "grid/report_context.h"
#include "print/grid_measures.h"
#include "print/grid_sheets.h"
#include "print/page_breaks.h"
#include "print/page_setup.h"
#include "print/page_totals.h"
#include "print/pages.h"
#include "print/printed_rows.h"

namespace vorek::print {

// What stands on the pages beside the grid.
struct GridHeading {
  std::string title;
  std::string conditions;  // values of parameters and the filter, in words; "" for none
  std::string printed;     // when
};

// The grid on view as it is shown, without a template: its columns and rows in their order, with
// their widths, alignments, colours and letters, hidden ones left out, trees set in. Where the grid
// has a sum row that counts what is printed, each page has its total and carries it on. Pages are
// counted by arithmetic and laid out when they are asked for.
class GridPrint : public Pages {
 public:
  // Reads the grid as long as it lives: the grid must outlive it. A page that is asked for while
  // the grid has other rows or columns than at first, or isn't drawn, is empty. Throws
  // Error(kInvalidCall), in Persian, for a paper without room for rows and for more than
  // kMostPages.
  GridPrint(const ReportContext& report, const PrintedColumns& columns, GridHeading heading,
            const PageSetup& setup);

  const Paper& Sheet() const override { return paper_; }
  std::size_t PageCount() const override { return breaks_.Count() * sheets_.sheets.size(); }
  std::vector<DrawnItem> Page(std::size_t n) const override;

 private:
  friend class GridPage;

  void Break(const ReportContext& report, const PrintedColumns& columns);
  PageBreaks Breaks(bool totals) const;
  std::size_t RoomBelow(double top, std::size_t lines) const;

  const Grid& grid_;
  GridHeading heading_;
  PageSetup setup_;
  Paper paper_;
  PrintedRows rows_;
  GridSheets sheets_;
  GridMeasures measures_;
  PageBreaks breaks_;
  std::vector<ColumnTotals> totals_;  // none on a single page, where the sum row tells them
  std::int32_t grid_rows_;
  std::int32_t grid_cols_;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_GRID_PRINT_H_
