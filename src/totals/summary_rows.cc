#include "totals/summary_rows.h"

#include <algorithm>
#include <string>
#include <vector>

#include "grid/summary_label.h"
#include "text/number.h"
#include "totals/fixed_total.h"
#include "totals/summed_column.h"

namespace vorek {
namespace {

enum class Kind { kSum, kAverage };

// The total of one column and the summary rows that were met on the way.
struct ColumnScan {
  FixedTotal total;
  std::vector<std::int32_t> sum_rows;
  std::vector<std::int32_t> average_rows;
};

ColumnScan Scan(const Grid& grid, std::int32_t column, SummedKind kind, bool skip_hidden) {
  ColumnScan scan;
  const bool heights = skip_hidden && grid.RowHeightsDiffer();
  const bool all_numbered = grid.IsSourced(0);
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.AskAt(row);
    if (!all_numbered && !grid.IsNumbered(row)) {
      const bool sum = HasLabel(grid, row, kSumLabel);
      if (sum) scan.sum_rows.push_back(row);
      if (!sum && HasLabel(grid, row, kAverageLabel)) {
        scan.average_rows.push_back(row);
        continue;
      }
      if (sum) continue;
    }
    if (heights && grid.RowHeight(row) == 0) continue;
    scan.total.Add(CountedInTotal(grid, row, column, kind));
  }
  return scan;
}

// A whole number, halves to even, of a total in ten-thousandths.
std::string AverageText(const FixedTotal& total, std::int32_t rows) {
  if (rows <= 0) return "0";
  const double average = text::RoundHalfEven(total.Value() / rows * 10000) / 10000;
  return text::ExactNumber(text::PlainNumber(text::RoundHalfEven(average)));
}

class SummaryRow {
 public:
  SummaryRow(ReportContext& report, Kind kind)
      : report_(report),
        kind_(kind),
        grid_(report.ActiveGrid()),
        column_(grid_.Col()),
        column_kind_(SummedKindOf(report.state, column_)) {}

  void Make() {
    const bool transposed = report_.state.isTransposedResult;
    ColumnScan scan = Scan(grid_, column_, column_kind_, transposed);
    NoteRows(scan);
    if (transposed) DropOldRow(scan);
    const std::string plain = kind_ == Kind::kSum ? scan.total.Text() : Average(scan);
    const std::vector<std::int32_t>& rows = Own(scan);
    if (rows.empty()) {
      Append(TotalText(plain, column_kind_), transposed);
    } else {
      for (const std::int32_t row : rows) Write(row, TotalText(plain, column_kind_));
    }
    Mark(transposed ? report_.transpose_layouts() : report_.layouts());
  }

 private:
  std::vector<std::int32_t>& Own(ColumnScan& scan) const {
    return kind_ == Kind::kSum ? scan.sum_rows : scan.average_rows;
  }

  void NoteRows(const ColumnScan& scan) {
    ReportState& state = report_.state;
    state.HasSumRow = !scan.sum_rows.empty();
    if (kind_ == Kind::kAverage || !scan.average_rows.empty()) {
      state.HasAvgRow = !scan.average_rows.empty();
    }
  }

  // On the cross table the last row of the kind gives way to a new one.
  void DropOldRow(ColumnScan& scan) {
    std::vector<std::int32_t>& rows = Own(scan);
    if (!rows.empty()) grid_.RemoveItem(rows.back());
    rows.clear();
  }

  std::string Average(const ColumnScan& scan) const {
    std::int32_t rows = grid_.Rows() - 1;
    if (!scan.sum_rows.empty()) --rows;
    if (!scan.average_rows.empty()) --rows;
    return AverageText(scan.total, rows);
  }

  void Write(std::int32_t row, const std::string& text) { grid_.WriteCell(row, column_, text); }

  void Append(const std::string& text, bool transposed) {
    const std::int32_t row = grid_.Rows();
    grid_.AddItem(std::to_string(row - 1));
    Write(row, text);
    const std::string label(kind_ == Kind::kSum ? kSumLabel : kAverageLabel);
    grid_.WriteCell(row, 0, label);
    MakeRoom(label);
    if (kind_ == Kind::kSum && !transposed) Emphasise(grid_, row);
  }

  // The column of numbers may be narrower than a label in bold letters.
  void MakeRoom(const std::string& label) {
    const std::int32_t text = report_.process.windows().TextWidth(label, 0);
    const std::int32_t room = text + text / 5 + 150;
    if (grid_.ColWidth(0) < room) grid_.SetColWidth(0, room);
  }

  void Mark(ColumnLayoutTable& layouts) const {
    ColumnLayout& layout = layouts[column_];
    (kind_ == Kind::kSum ? layout.make_sum : layout.make_average) = true;
  }

  ReportContext& report_;
  Kind kind_;
  Grid& grid_;
  std::int32_t column_;
  SummedKind column_kind_;
};

void PointColumns(ReportContext& report) {
  for (Grid* grid : {&report.flxMain, &report.flxTranspose}) {
    IgnoreErrors([&] { grid->SetCol(grid->MouseCol()); });
  }
}

}  // namespace

void MakeSumRow(ReportContext& report) { SummaryRow(report, Kind::kSum).Make(); }
void MakeAvgRow(ReportContext& report) { SummaryRow(report, Kind::kAverage).Make(); }

void mnuSum_Click(ReportContext& report) {
  PointColumns(report);
  MakeSumRow(report);
}

void mnuAvg_Click(ReportContext& report) {
  PointColumns(report);
  MakeAvgRow(report);
}

void mnuDelete_Click(ReportContext& report) {
  Grid& grid = report.ActiveGrid();
  ColumnLayoutTable& layouts =
      report.state.isTransposedResult ? report.transpose_layouts() : report.layouts();
  bool cleared = false;
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    cleared = layouts[column].make_sum || cleared;
    layouts[column].make_sum = false;
  }
  // A cross table's last sub-row has an empty column 0 too, and isn't a total.
  const std::int32_t last = grid.Rows() - 1;
  const bool total = HasLabel(grid, last, kSumLabel) || HasLabel(grid, last, kAverageLabel);
  if (cleared && total) grid.SetRows(last);
}

}  // namespace vorek
