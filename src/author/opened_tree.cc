#include "author/opened_tree.h"

#include <optional>

#include "grid/outline_mark.h"
#include "grid/tree_rows.h"

namespace vorek {
namespace {

class TreeOpening {
 public:
  TreeOpening(ReportContext& report, const TreeLimits& limits)
      : report_(report), grid_(report.flxMain), limits_(limits) {}

  std::string Run() {
    std::string scratch;
    for (std::int32_t row = grid_.FixedRows(); row < grid_.Rows(); ++row) {
      const OutlineMark mark = MarkOf(grid_, row, 0, grid_.CellView(row, 0, scratch));
      if (mark.sign == '+' && MayOpen(mark.depth)) Open(row);
    }
    expansion_.reset();
    if (openings_ > 0) MakeCalculatedColumns(report_);
    return cut_;
  }

 private:
  bool MayOpen(std::int32_t depth) {
    if (depth >= limits_.levels) return Cut(limits_.levels, "levels");
    if (openings_ >= limits_.openings) return Cut(limits_.openings, "opened rows");
    return grid_.Rows() < limits_.rows || Cut(limits_.rows, "rows");
  }

  // The first limit that is met is the one that is told.
  bool Cut(std::int32_t limit, const char* of) {
    if (cut_.empty()) cut_ = "rows stay closed: more than " + std::to_string(limit) + " " + of;
    return false;
  }

  void Open(std::int32_t row) {
    if (!expansion_) expansion_.emplace(report_);
    expansion_->Expand(row);
    ++openings_;
  }

  ReportContext& report_;
  Grid& grid_;
  const TreeLimits& limits_;
  std::optional<TreeExpansion> expansion_;
  std::int32_t openings_ = 0;
  std::string cut_;
};

}  // namespace

std::string OpenTree(ReportContext& report, const TreeLimits& limits) {
  if (report.flxMain.OutlineKind() != Outline::kTree) return "";
  return TreeOpening(report, limits).Run();
}

}  // namespace vorek
