#include "grid/column_sort.h"

#include <algorithm>
#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/expression_columns.h"
#include "grid/summary_label.h"
#include "text/cell_text.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

constexpr std::int32_t kAscending = 1;
constexpr std::int32_t kDescending = 2;
// Added to a way, these give the sort of numbers and the exact sort of texts.
constexpr std::int32_t kToNumberSort = 2;
constexpr std::int32_t kToTextSort = 6;

bool LooksLikeDate(std::string_view text) {
  const std::string_view trimmed = text::TrimView(text);
  const auto strokes =
      std::count_if(trimmed.begin(), trimmed.end(), [](char c) { return c == '/' || c == '\\'; });
  return strokes == 2 && text::Length(trimmed) == 10;
}

// The sort of one column.
class ColumnSort {
 public:
  ColumnSort(ReportContext& report, std::int32_t column)
      : report_(report), grid_(report.flxMain), column_(column) {
    const auto field = static_cast<std::size_t>(column) - 1;
    const std::vector<FieldInfo>& fields = report.state.QueryFields;
    if (field < fields.size()) type_ = fields[field].type;
  }

  // A sort that is cancelled leaves the grid, and which sort was the last, as they were.
  void Run(bool turn) {
    std::int32_t code = report_.state.SortCode;
    if (turn) code = code == kAscending ? kDescending : kAscending;
    SortRows(code);
    report_.state.SortColumn = column_;
    report_.state.SortCode = code;
    const PassWatch::Unbroken rows_have_moved(report_.process.watch);
    grid_.SetSortedBy({column_, code == kDescending});
    RemakeExpressions();
    ColourBySortColumn(grid_, column_);
    if (IsMoneyField(type_)) FormMoney();
  }

 private:
  void SortRows(std::int32_t code) {
    if (IsMoneyField(type_)) DropGroups();
    try {
      grid_.SetCol(column_);
      grid_.Sort(Order(code));
    } catch (const std::exception&) {
      if (IsMoneyField(type_)) FormMoney();
      throw;
    }
  }

  // Long numbers are sorted as such whatever stands between them. A money field's digit groups
  // aren't the strokes of a date.
  std::int32_t Order(std::int32_t code) const {
    if (grid_.Rows() >= 3 && IsNumericFieldType(type_) && (IsLong(grid_.Rows() - 1) || IsLong(1))) {
      return code + kToNumberSort;
    }
    const bool dates = !IsMoneyField(type_) && IsDateColumn(grid_, column_);
    return dates ? code + kToTextSort : code;
  }

  bool IsLong(std::int32_t row) const {
    constexpr std::size_t kLongText = 7;
    const std::string text = grid_.TextMatrix(row, column_);
    return text::Length(IsMoneyField(type_) ? UnformatNumber(text) : text) >= kLongText;
  }

  // True if the sort reads the same numbers with and without digit groups.
  bool HoldsNumbers() const {
    const TextSource* const source = grid_.ColumnSource(column_);
    const bool typed = source != nullptr && source->GivesNumbers();
    std::string scratch;
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      grid_.AskAt(row);
      if (typed && grid_.IsSourced(row, column_)) continue;
      const std::string_view text = grid_.CellView(row, column_, scratch);
      if (text.find_first_not_of("0123456789./-() ") != std::string_view::npos) return false;
    }
    return true;
  }

  // What the field gives is read without its groups, so that only cells that were written lose
  // them; where the field shows them, those do as well.
  void DropGroups() {
    if (grid_.IsSourced(column_)) return;
    const bool all = !HoldsNumbers();
    const bool plain_field = grid_.SourceForm(column_) == CellForm::kNumber;
    std::string scratch;
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      if (!all && grid_.IsSourced(row, column_)) continue;
      const std::string plain = UnformatNumber(grid_.CellView(row, column_, scratch));
      grid_.WriteCell(row, column_, all || plain_field ? plain : MoneyText(plain));
    }
  }

  // A double field, which shows plain numbers after a fill, gets digit groups too.
  void FormMoney() {
    if (type_ == kDouble) grid_.ReformSource(column_, CellForm::kNumberMoney);
    if (grid_.IsSourced(column_)) return;
    std::string scratch;
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      if (grid_.IsSourced(row, column_)) continue;
      const std::string plain = UnformatNumber(grid_.CellView(row, column_, scratch));
      grid_.WriteCell(row, column_, MoneyText(plain));
    }
  }

  static std::string MoneyText(std::string_view plain) {
    std::string money;
    AppendMoney(plain, money);
    return money;
  }

  void RemakeExpressions() {
    const std::vector<CachedReport>& cache = report_.process.main.ReportCache;
    const auto found = std::find_if(cache.begin(), cache.end(), [&](const CachedReport& report) {
      return report.report_id == report_.state.ReportID;
    });
    if (found != cache.end()) grid_.SetCols(found->field_count + 1);
    MakeExpressionColumns(report_);
  }

  ReportContext& report_;
  Grid& grid_;
  std::int32_t column_;
  int type_ = 0;
};

// The rows' numbers after a sort; the average row keeps its label.
void NumberAgain(Grid& grid) {
  std::vector<std::int32_t> averages;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    if (!grid.IsNumbered(row) && HasLabel(grid, row, kAverageLabel)) averages.push_back(row);
  }
  grid.NumberRows();
  for (const std::int32_t row : averages) grid.WriteCell(row, 0, kAverageLabel);
}

// A grid draws again as it did, whatever happens.
class RedrawPutBack {
 public:
  explicit RedrawPutBack(Grid& grid) : grid_(grid), redraw_(grid.Redraw()) {}
  ~RedrawPutBack() {
    if (!grid_.Redraw()) IgnoreAllErrors([this] { grid_.SetRedraw(redraw_); });
  }
  RedrawPutBack(const RedrawPutBack&) = delete;
  RedrawPutBack& operator=(const RedrawPutBack&) = delete;

 private:
  Grid& grid_;
  bool redraw_;
};

}  // namespace

void SortflxMain(ReportContext& report, std::int32_t column) {
  ReportState& state = report.state;
  const bool same = column == state.SortColumn;
  if (column == 0) column = state.SortColumn;
  if (column < 1 || column > report.flxMain.Cols() - 1) return;
  const RedrawPutBack redraw(report.flxMain);
  report.flxMain.SetRedraw(false);
  IgnoreErrors([&] {
    ColumnSort(report, column).Run(same);
    report.flxMain.SetRedraw(true);
  });
}

void SortByHeader(ReportContext& report, std::int32_t column) {
  Grid& grid = report.flxMain;
  if (grid.Rows() < 3) return;
  SortflxMain(report, column);
  if (report.process.watch.Cancelled()) return;
  const std::vector<std::string> sum = TakeSumRowsOut(grid);
  NumberAgain(grid);
  if (!sum.empty()) PutSumRowLast(grid, sum);
}

bool IsDateColumn(const Grid& grid, std::int32_t column) {
  if (grid.Rows() < 2) return false;
  std::string scratch;
  return LooksLikeDate(grid.CellView(1, column, scratch)) ||
         LooksLikeDate(grid.CellView(grid.Rows() - 1, column, scratch));
}

void ColourBySortColumn(Grid& grid, std::int32_t column) {
  grid.SetRedraw(false);
  const std::int32_t last = grid.Rows() - 1;
  if (last >= 1 && !HasLabel(grid, last, "")) {
    std::vector<bool> changes = grid.Changes(column);
    changes[1] = !grid.TextMatrix(1, column).empty();
    bool white = true;
    for (std::int32_t row = 1; row <= last; ++row) {
      grid.AskAt(row);
      if (changes[static_cast<std::size_t>(row)]) white = !white;
      grid.SetRowBackColor(row, white ? kWhite : kLightBlue);
    }
    grid.SetCol(1);
  }
  grid.SetRow(last >= 1 ? 1 : 0);
  grid.SetRedraw(true);
  grid.SetFocus();
}

}  // namespace vorek
