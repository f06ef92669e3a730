#include "grid/merged_rows.h"

#include <cstdint>
#include <string>
#include <vector>

#include "grid/scaled_sort.h"
#include "text/cell_text.h"
#include "text/number.h"

namespace vorek {
namespace {

enum MergeType : std::int32_t { kKey = 1, kAdded = 2, kJoined = 3 };

// The key column; 0 if there is none.
std::int32_t KeyColumn(ReportContext& report) {
  for (std::int32_t column = 1; column < report.flxMain.Cols(); ++column) {
    if (report.layouts()[column].merge_type == kKey) return column;
  }
  return 0;
}

int FieldType(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  return field < state.QueryFields.size() ? state.QueryFields[field].type : 0;
}

void SortByKey(ReportContext& report, std::int32_t key) {
  Grid& grid = report.flxMain;
  grid.SetCol(key);
  constexpr std::int32_t kTextNoCase = 5;
  if (NeedsScaling(grid, key, FieldType(report.state, key))) {
    SortSmallTexts(grid, key);
  } else {
    grid.Sort(kTextNoCase);
  }
}

// Folds runs of rows with one key, column by column.
class Fold {
 public:
  Fold(ReportContext& report, std::int32_t key) : report_(report), grid_(report.flxMain) {
    const std::vector<bool> changes = grid_.Changes(key);
    for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
      if (changes[static_cast<std::size_t>(row)]) firsts_.push_back(row);
    }
    firsts_.push_back(grid_.Rows());
  }

  void Run() {
    for (std::int32_t column = 1; column < grid_.Cols(); ++column) {
      const std::int32_t type = report_.layouts()[column].merge_type;
      if (type == kAdded || type == kJoined) FoldColumn(column, type);
    }
    std::vector<std::int32_t> kept = {0};
    kept.insert(kept.end(), firsts_.begin(), firsts_.end() - 1);
    grid_.KeepRows(kept);
  }

 private:
  void FoldColumn(std::int32_t column, std::int32_t type) {
    const TextSource* const source = grid_.ColumnSource(column);
    const bool exact = source != nullptr && source->GivesFixed();
    for (std::size_t i = 0; i + 1 < firsts_.size(); ++i) {
      grid_.AskAt(static_cast<std::int32_t>(i));
      if (firsts_[i + 1] - firsts_[i] < 2) continue;
      grid_.WriteCell(firsts_[i], column,
                      type == kJoined ? Joined(i, column)
                      : exact         ? FixedSum(i, column)
                                      : Sum(i, column));
    }
  }

  // Added two by two, each sum a text in between.
  std::string Sum(std::size_t run, std::int32_t column) const {
    double sum = grid_.CellValue(firsts_[run], column);
    for (std::int32_t row = firsts_[run] + 1; row < firsts_[run + 1]; ++row) {
      sum = text::NumericPrefix(text::PlainNumber(sum + grid_.CellValue(row, column)));
    }
    return text::PlainNumber(sum);
  }

  // The same of exact values, which the texts in between hold up to 15 digits; beyond them no digit
  // is lost.
  std::string FixedSum(std::size_t run, std::int32_t column) const {
    FixedPoint sum = 0;
    for (std::int32_t row = firsts_[run]; row < firsts_[run + 1]; ++row) {
      const FixedPoint value = grid_.CellFixed(row, column);
      const bool fits = value < 0 ? sum >= INT64_MIN - value : sum <= INT64_MAX - value;
      if (!fits) return Sum(run, column);
      sum += value;
    }
    std::string text;
    text::AppendScaled(sum, 4, text);
    return text;
  }

  std::string Joined(std::size_t run, std::int32_t column) {
    std::string joined(grid_.CellView(firsts_[run], column, scratch_));
    for (std::int32_t row = firsts_[run] + 1; row < firsts_[run + 1]; ++row) {
      joined += ',';
      joined += grid_.CellView(row, column, scratch_);
    }
    return joined;
  }

  ReportContext& report_;
  Grid& grid_;
  std::vector<std::int32_t> firsts_;  // of each run, and one behind the last row
  std::string scratch_;
};

}  // namespace

void MakeFlexMerged(ReportContext& report) {
  if (!report.state.MakeMergeFlag) return;
  const std::int32_t key = KeyColumn(report);
  if (key == 0) return;
  SortByKey(report, key);
  Fold(report, key).Run();
  report.flxMain.NumberRows();
}

}  // namespace vorek
