#include <algorithm>
#include <utility>
#include <vector>

#include "export/excel_export.h"
#include "export/exported_columns.h"
#include "export/long_work.h"
#include "export/sheet_lock.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::size_t kBody = 0;
constexpr std::size_t kFirstHeader = 1;  // one of each alignment
constexpr SheetAlignment kAlignments[] = {
    SheetAlignment::kGeneral,      SheetAlignment::kLeft,       SheetAlignment::kCentre,
    SheetAlignment::kRight,        SheetAlignment::kFill,       SheetAlignment::kJustify,
    SheetAlignment::kCentreAcross, SheetAlignment::kDistributed};

// The alignment that a number from 1 to 8 stands for; a grid's numbers are handed on as they are.
std::size_t AlignmentOf(std::int32_t number) {
  constexpr std::int32_t kUsual = 4;
  constexpr std::int32_t kMost = 8;
  if (number <= 0) number = kUsual;
  return number > kMost ? 0 : static_cast<std::size_t>(number) - 1;
}

WorkbookLook FormattedLook(const Grid& grid) {
  constexpr double kTwips = 50;  // of a grid column that one of the sheet's characters stands for
  WorkbookLook look;
  look.styles = {{"B Mitra", 10, false, true, SheetAlignment::kGeneral}};
  for (const SheetAlignment alignment : kAlignments) {
    look.styles.push_back({"B Mitra", 12, true, true, alignment});
  }
  look.row_style = kBody;
  for (std::int32_t col = 1; col < grid.Cols(); ++col) {
    look.column_widths.push_back(grid.ColWidth(col) / kTwips);
  }
  return look;
}

// Rows of a grid on their way into the sheet.
class GridIntoSheet {
 public:
  GridIntoSheet(ReportContext& report, const PlainMoney& money, const NewWorkbookOptions& options)
      : report_(report),
        grid_(report.ActiveGrid()),
        transposed_(report.state.isTransposedResult),
        formatted_(options.formatted && !transposed_),
        widened_(options.formatted && transposed_),
        columns_(ExportedColumns(grid_, &money)) {
    for (const ExportedColumn& column : columns_) {
      headers_.push_back(kFirstHeader + AlignmentOf(grid_.ColAlignment(column.Number())));
    }
  }

  WorkbookLook Look(bool locked) {
    WorkbookLook look = formatted_ ? FormattedLook(grid_) : WorkbookLook();
    if (widened_) look.column_widths = WidthsOfNumbers();
    look.font = "b mitra";
    look.font_size = 10;
    if (locked) look.protection = std::make_unique<SheetProtection>(SheetLock());
    return look;
  }

  void Write(WorkbookWriter& book) {
    LongWork work(report_, grid_.Rows());
    for (std::int32_t row = 0; row < grid_.Rows(); ++row) {
      work.Step();
      if (transposed_ && grid_.RowHeight(row) < 1) continue;
      book.BeginRow();
      WriteCells(book, row);
      book.EndRow();
    }
    // The formats reach one row further than the cells.
    if (!formatted_ || grid_.Rows() % WorkbookLimits::kRows == 0) return;
    book.BeginRow();
    book.EndRow();
  }

 private:
  std::int32_t PlaceOf(const ExportedColumn& column) const {
    return column.Number() + (transposed_ ? 1 : 0);
  }

  // A spreadsheet program widens a column that has the usual width for a number without a format
  // that it is given, up to the eleven characters which such a number shows at most.
  std::vector<double> WidthsOfNumbers() {
    constexpr std::size_t kUsual = 8;
    constexpr std::size_t kMost = 11;
    std::vector<double> widths;
    for (const ExportedColumn& column : columns_) {
      widths.resize(static_cast<std::size_t>(PlaceOf(column)), WorkbookLook::kDefaultWidth);
      const std::size_t longest = LongestNumber(column);
      if (longest > kUsual) widths.back() = static_cast<double>(std::min(longest, kMost)) + 1;
    }
    return widths;
  }
  std::size_t LongestNumber(const ExportedColumn& column) {
    std::size_t longest = 0;
    for (std::int32_t row = 0; row < grid_.Rows(); ++row) {
      if (grid_.RowHeight(row) < 1) continue;
      const std::string_view text = column.Text(grid_.RowHandle(row), scratch_);
      if (text.size() > longest && IsSheetNumber(text)) longest = text.size();
    }
    return longest;
  }

  void WriteCells(WorkbookWriter& book, std::int32_t row) {
    const std::uint32_t handle = grid_.RowHandle(row);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::string_view text = columns_[i].Text(handle, scratch_);
      const std::int32_t place = PlaceOf(columns_[i]);
      if (formatted_) {
        book.Text(place, text, row == 0 ? headers_[i] : kBody);
      } else if (IsSheetNumber(text)) {
        book.Number(place, text, WorkbookLook::kNoStyle);
      } else if (!text.empty()) {
        book.Text(place, text, WorkbookLook::kNoStyle);
      }
    }
  }

  ReportContext& report_;
  const Grid& grid_;
  bool transposed_;
  bool formatted_;
  bool widened_;  // columns that get no width of the grid's make room for their numbers
  std::vector<ExportedColumn> columns_;
  std::vector<std::size_t> headers_;  // the styles of the columns' header cells
  std::string scratch_;
};

void CheckWidth(const ReportContext& report, const Grid& grid) {
  const std::int32_t last = grid.Cols() - (report.state.isTransposedResult ? 0 : 1);
  if (last <= WorkbookLimits::kColumns) return;
  throw Error(ErrorNumber::kInvalidCall, "گزارش " + std::to_string(report.state.ReportID) + " با " +
                                             std::to_string(grid.Cols() - 1) +
                                             " ستون در برگه اكسل جا نمي گيرد.");
}

}  // namespace

std::size_t WriteNewWorkbook(ReportContext& report, const PlainMoney& money,
                             const NewWorkbookOptions& options, std::unique_ptr<OutputFile> out) {
  Spreadsheet* const spreadsheet = report.process.services.spreadsheet.get();
  if (spreadsheet == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "ساختن فايل اكسل در اين برنامه ممكن نيست.");
  }
  CheckWidth(report, report.ActiveGrid());
  GridIntoSheet rows(report, money, options);
  const std::unique_ptr<WorkbookWriter> book =
      spreadsheet->NewWorkbook(std::move(out), rows.Look(options.locked));
  rows.Write(*book);
  if (options.chart != nullptr) book->AddChart(*options.chart);
  book->Finish();
  return book->Sheets();
}

}  // namespace vorek
