#include <algorithm>

#include "author/check_context.h"
#include "state/column_layout.h"

namespace vorek {
namespace {

class LayoutRules {
 public:
  explicit LayoutRules(CheckContext& check) : check_(check), rows_(check.report.layout) {}

  void Run() {
    CheckGap();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      CheckColumn(rows_[i]);
      CheckMeasures(rows_[i]);
      CheckTwice(i);
    }
    CheckShapes();
  }

 private:
  static Place At(std::int32_t column, const char* field) {
    return {.table = CatalogueTable::kLayout, .row = std::to_string(column), .field = field};
  }

  // The rows are in the order of their columns; 0 is the column of row numbers.
  void CheckGap() {
    std::int32_t next = 1;
    for (const LayoutRow& row : rows_) {
      if (row.column < next) continue;
      const bool lays_out = !check_.LastColumn() || row.column <= *check_.LastColumn();
      if (row.column > next && lays_out && row.column <= ColumnLayoutTable::kLast) {
        return check_.Tell(Rule::kLayoutGap, At(next, "ColumnNumber"),
                           {std::to_string(next), std::to_string(row.column)});
      }
      next = row.column + 1;
    }
  }

  void CheckColumn(const LayoutRow& row) {
    const std::optional<std::int32_t> last = check_.LastColumn();
    if (row.column > ColumnLayoutTable::kLast || row.column < 0) {
      check_.Tell(Rule::kLayoutEnd, At(row.column, "ColumnNumber"));
    } else if (last && row.column > *last) {
      check_.Tell(Rule::kLayoutBeyond, At(row.column, "ColumnNumber"), {std::to_string(*last)});
    }
  }

  void CheckMeasures(const LayoutRow& row) {
    constexpr std::int32_t kWidest = 32767;
    constexpr std::int32_t kLastAlignment = 9;
    const std::int32_t width = row.width.value_or(0);
    const std::int32_t alignment = row.alignment.value_or(0);
    if (width < 0 || width > kWidest) {
      check_.Tell(Rule::kWidth, At(row.column, "Width"), {std::to_string(width)});
    }
    if (alignment < 0 || alignment > kLastAlignment) {
      check_.Tell(Rule::kAlignment, At(row.column, "Alignment"), {std::to_string(alignment)});
    }
  }

  void CheckTwice(std::size_t index) {
    const std::int32_t column = rows_[index].column;
    if (index > 0 && rows_[index - 1].column == column) return;
    const auto rows = std::count_if(rows_.begin(), rows_.end(),
                                    [&](const LayoutRow& row) { return row.column == column; });
    if (rows > 1) {
      check_.Tell(Rule::kLayoutTwice, At(column, "ColumnNumber"), {std::to_string(rows)});
    }
  }

  void CheckShapes() {
    const auto spread = std::count_if(rows_.begin(), rows_.end(),
                                      [](const LayoutRow& row) { return row.transpose_type == 1; });
    const bool key = std::any_of(rows_.begin(), rows_.end(),
                                 [](const LayoutRow& row) { return row.merge_type == 1; });
    if (spread > 1) {
      check_.Tell(Rule::kSpreadTwice, {.field = "TransposeType"}, {std::to_string(spread)});
    }
    if (check_.report.cross && spread == 0) {
      check_.Tell(Rule::kNothingSpread, {.field = "MakeTranspose"});
    }
    if (check_.report.fold && !key) check_.Tell(Rule::kNoFoldKey, {.field = "MakeMerge"});
  }

  CheckContext& check_;
  const std::vector<LayoutRow>& rows_;
};

}  // namespace

void CheckLayout(CheckContext& check) { LayoutRules(check).Run(); }

}  // namespace vorek
