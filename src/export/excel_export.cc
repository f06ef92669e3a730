#include "export/excel_export.h"

#include "export/attachment.h"
#include "export/crystal_print.h"
#include "export/finished_workbook.h"
#include "export/long_work.h"
#include "export/markup.h"
#include "export/template_fill.h"
#include "print/grid_template.h"
#include "print/print_template.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr int kHourglass = 11;

void ExportNewWorkbook(ReportContext& report, PlainMoney& money, bool formatted) {
  report.process.windows().SetMousePointer(kHourglass);
  const FinishedWorkbook file(report);
  const std::size_t sheets = WriteNewWorkbook(
      report, money, {.formatted = formatted, .locked = report.state.LockPrintPreview},
      file.Create());
  report.process.windows().SetMousePointer(0);
  money.PutBack();
  if (sheets > 1) {
    report.notices.ShowMessage("اطلاع", "سطرهاي گزارش در يك برگه جا نشد و در " +
                                            std::to_string(sheets) + " برگه نوشته شد.");
  }
  file.Show();
}

// A print template made of the grid, for a print whose own one can't be used.
std::string MakeList(ReportContext& report) {
  std::string path;
  if (GetTempFileName(report.process, report.notices, path).empty()) {
    throw Error(ErrorNumber::kPathAccess, "شاخه موقت ويندوز پيدا نشد.");
  }
  report.process.services.files->WritePrivate(path,
                                              print::WriteTemplate(print::TemplateForGrid(report)));
  return path;
}

void ExportByChoice(ReportContext& report, FormTemplate& form, PlainMoney& money, bool formatted) {
  std::string path;
  bool is_excel = false;
  if (!form.GetReportTemplate(path, is_excel)) return;
  if (!is_excel) {
    money.TakeOut();
    PrintCrystalOrList(report, path, [&] { return MakeList(report); });
  } else if (text::TrimView(path).empty()) {
    ExportNewWorkbook(report, money, formatted);
  } else {
    report.process.windows().SetMousePointer(kHourglass);
    const FinishedWorkbook file(report);
    const std::string note =
        FillExcelTemplate(report, GridOnShow(report), path, money, *file.Create());
    report.process.windows().SetMousePointer(0);
    money.PutBack();
    if (!note.empty()) report.notices.ShowMessage("اطلاع", note);
    file.Show();
  }
}

// Puts the pointer and the drawing back, whatever happens.
class ScreenPutBack {
 public:
  explicit ScreenPutBack(ReportContext& report) : report_(report) {}
  ScreenPutBack(const ScreenPutBack&) = delete;
  ScreenPutBack& operator=(const ScreenPutBack&) = delete;
  ~ScreenPutBack() {
    IgnoreAllErrors([this] { report_.process.windows().SetMousePointer(0); });
    for (Grid* const grid : {&report_.flxMain, &report_.flxTranspose}) {
      IgnoreAllErrors([grid] { grid->SetRedraw(true); });
    }
  }

 private:
  ReportContext& report_;
};

// The grid as a table that keeps its direction when it is pasted; empty for one too large.
std::string HtmlTable(const Grid& grid, LongWork& work) {
  constexpr std::int64_t kMostCells = 500000;
  if (std::int64_t{grid.Rows()} * grid.Cols() > kMostCells) return {};
  std::string html = "<html><body dir=\"rtl\"><table dir=\"rtl\">";
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    work.Step();
    html += "<tr>";
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      html += "<td>" + HtmlText(grid.CellView(row, col, scratch)) + "</td>";
    }
    html += "</tr>\n";
  }
  return html + "</table></body></html>";
}

// Cells of a new sheet as a paste of texts makes them.
void WritePasted(const Grid& grid, WorkbookWriter& book, LongWork& work) {
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    work.Step();
    book.BeginRow();
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      const std::string_view text = grid.CellView(row, col, scratch);
      if (IsSheetNumber(text)) {
        book.Number(col + 1, text, WorkbookLook::kNoStyle);
      } else if (!text.empty()) {
        book.Text(col + 1, text, WorkbookLook::kNoStyle);
      }
    }
    book.EndRow();
  }
  book.Finish();
}

void PutTextOnClipboard(ReportContext& report, Grid& grid) {
  grid.SetCol(0);
  grid.SetRow(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetRowSel(grid.Rows() - 1);
  Clipboard* const clipboard = report.process.services.clipboard.get();
  if (clipboard == nullptr) return;
  LongWork work(report, grid.Rows());
  const std::string text = grid.Clip();
  const std::string table = HtmlTable(grid, work);
  clipboard->Clear();
  clipboard->Put(text, table);
}

}  // namespace

bool ExcelCellFormatting(Process& process) {
  Recordset& slot = process.dten().rssqlGeneral1;
  OpenSlot(slot, "Select * from tblVorekSystemParameters Where ID=6 and Value=1");
  const bool formatting = slot.RecordCount() == 0;
  slot.Close();
  return formatting;
}

void ExportExcel(ReportContext& report, FormTemplate& form, std::int32_t report_id) {
  const bool formatted = ExcelCellFormatting(report.process);
  if (report_id < 1) return;
  const ScreenPutBack put_back(report);
  report.process.windows().SetMousePointer(kHourglass);
  PlainMoney money(report);
  form.FormID = report_id;
  form.UserID = report.state.UserID;
  ExportByChoice(report, form, money, formatted);
}

void ExportExcelFast(ReportContext& report) {
  const PassWatch::Pass pass(report.process.watch, PassWatch::Leaves::kAll);
  IgnoreErrors([&] {
    Grid& grid = report.ActiveGrid();
    PutTextOnClipboard(report, grid);
    Spreadsheet* const spreadsheet = report.process.services.spreadsheet.get();
    if (spreadsheet == nullptr) return;
    const FinishedWorkbook file(report);
    const auto book = spreadsheet->NewWorkbook(file.Create(), WorkbookLook());
    {
      LongWork work(report, grid.Rows());
      WritePasted(grid, *book, work);
    }
    file.Show();
  });
  if (report.process.watch.Cancelled()) {
    report.process.windows().TellCancelled("ساختن فايل لغو شد.");
  }
}

}  // namespace vorek
