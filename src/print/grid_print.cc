#include "print/grid_print.h"

#include <cmath>
#include <utility>

#include "print/grid_page.h"
#include "vorek/error.h"

namespace vorek::print {

GridPrint::GridPrint(const ReportContext& report, const PrintedColumns& columns,
                     GridHeading heading, const PageSetup& setup)
    : grid_(report.ActiveGrid()),
      heading_(std::move(heading)),
      setup_(setup),
      paper_{setup.PaperWidth(), setup.PaperHeight(), "", heading_.title},
      rows_(grid_),
      sheets_(SpreadColumns(grid_, columns, setup_)),
      measures_(Measure(grid_, sheets_, heading_.conditions, setup_.RoomAcross())),
      grid_rows_(grid_.Rows()),
      grid_cols_(grid_.Cols()) {
  Break(report, columns);
  if (GridPrint::PageCount() > kMostPages) {
    throw Error(ErrorNumber::kInvalidCall,
                "چاپ: بيش از " + std::to_string(kMostPages) + " صفحه مي شود.");
  }
}

void GridPrint::Break(const ReportContext& report, const PrintedColumns& columns) {
  breaks_ = Breaks(false);
  const std::vector<std::int32_t> summed = SummedColumns(grid_, columns.shown);
  if (breaks_.Count() == 1 || summed.empty()) return;
  const PageBreaks plain = std::exchange(breaks_, Breaks(true));
  totals_ = TotalsOfPages(report, summed, rows_, breaks_);
  if (totals_.empty()) breaks_ = plain;
}

// With totals a page has a line for its own and one that is carried on, all but the first one more
// for what they take over; the last one carries nothing on.
PageBreaks GridPrint::Breaks(bool totals) const {
  const PageBreaks::Room room{RoomBelow(measures_.FirstTop(), totals ? 2 : 0),
                              RoomBelow(measures_.later_title, totals ? 3 : 0),
                              totals ? std::size_t{1} : std::size_t{0}};
  return {rows_.Count(), rows_.SummaryCount(), room};
}

std::size_t GridPrint::RoomBelow(double top, std::size_t lines) const {
  constexpr double kHair = 1e-6;
  constexpr std::size_t kLeastRows = 5;  // the summary rows stand together
  const double room = setup_.RoomDown() - top - measures_.header - GridMeasures::kFooter;
  const auto rows =
      static_cast<std::size_t>(std::max(std::floor(room / measures_.row + kHair), 0.0));
  if (rows >= lines + kLeastRows) return rows - lines;
  throw Error(ErrorNumber::kInvalidCall, "چاپ: كاغذ با اين حاشيه ها براي سطرها جا ندارد.");
}

std::vector<DrawnItem> GridPrint::Page(std::size_t n) const {
  const bool same =
      grid_.Drawn() && grid_.Rows() == grid_rows_ && grid_.Cols() == grid_cols_ && n < PageCount();
  return same ? GridPage(*this, n).Draw() : std::vector<DrawnItem>();
}

}  // namespace vorek::print
