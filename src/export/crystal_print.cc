#include "export/crystal_print.h"

#include <algorithm>
#include <vector>

#include "catalog/report_row.h"
#include "platform/print_job.h"
#include "text/persian_date.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr int kHourglass = 11;
constexpr std::int32_t kColumns = 50;  // of the staging tables
constexpr std::size_t kRowsAStatement = 100;
constexpr const char* kRowTable = "tblVorekCrystalReport";

std::string Literal(const std::string& text) { return "'" + text::Replace(text, "'", "''") + "'"; }

std::string TwoDigits(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

std::string PersianDate(const DateTime& now) {
  const text::CalendarDate date = text::ToPersian({now.year, now.month, now.day});
  return std::to_string(date.year) + "/" + TwoDigits(date.month) + "/" + TwoDigits(date.day);
}

std::string TimeOfDay(const DateTime& now) {
  return TwoDigits(now.hour) + ":" + TwoDigits(now.minute) + ":" + TwoDigits(now.second);
}

// A transaction that ends with what was done, also when a statement fails: what was staged stays. A
// database without transactions goes without.
class Staged {
 public:
  explicit Staged(Recordset& slot) : slot_(slot) {
    open_ = IgnoreErrors([&] { OpenSlot(slot_, "Begin Transaction"); });
  }
  ~Staged() {
    if (open_) IgnoreErrors([&] { OpenSlot(slot_, "Commit Transaction"); });
  }
  Staged(const Staged&) = delete;
  Staged& operator=(const Staged&) = delete;

 private:
  Recordset& slot_;
  bool open_;
};

class Staging {
 public:
  explicit Staging(ReportContext& report)
      : report_(report),
        grid_(report.ActiveGrid()),
        transposed_(report.state.isTransposedResult),
        slot_(report.process.dten().rssqlGeneral1) {}

  void Run() {
    const Staged staged(slot_);
    OpenSlot(slot_, std::string("Delete ") + kRowTable + " Where UserID=" + User());
    StageHeader();
    StageRows();
  }

 private:
  std::string User() const { return std::to_string(report_.state.UserID); }
  std::string Report() const { return std::to_string(report_.state.ReportID); }

  void StageHeader();
  void StageRows();
  void RunRows(const std::string& head, const std::vector<std::string>& rows);
  // The columns of the rows: all of flxMain, those on show of flxTranspose.
  std::vector<std::int32_t> RowColumns() const;
  std::vector<std::int32_t> ShownColumns() const;
  std::string Head(const std::string& table, const char* keys, std::size_t written) const;
  std::string Values(const std::string& keys, std::int32_t row,
                     const std::vector<std::int32_t>& columns) const;
  // How many columns from Cols on are named with an empty text.
  std::int32_t EmptyColumns() const { return std::max(kColumns - grid_.Cols() + 1, 0); }

  ReportContext& report_;
  Grid& grid_;
  bool transposed_;
  Recordset& slot_;
};

std::vector<std::int32_t> Staging::ShownColumns() const {
  std::vector<std::int32_t> columns;
  for (std::int32_t column = 1; column < grid_.Cols(); ++column) {
    if (grid_.ColWidth(column) != 0) columns.push_back(column);
  }
  return columns;
}

std::vector<std::int32_t> Staging::RowColumns() const {
  if (transposed_) return ShownColumns();
  std::vector<std::int32_t> columns;
  for (std::int32_t column = 1; column < grid_.Cols(); ++column) columns.push_back(column);
  return columns;
}

// Columns between the last one written and Cols aren't named.
std::string Staging::Head(const std::string& table, const char* keys, std::size_t written) const {
  std::string head = "Insert Into " + table + " (UserID, ReportID" + keys;
  for (std::size_t k = 1; k <= written; ++k) head += ", Column" + std::to_string(k);
  for (std::int32_t c = grid_.Cols(); c <= kColumns; ++c) head += ", Column" + std::to_string(c);
  return head + ") Values ";
}

std::string Staging::Values(const std::string& keys, std::int32_t row,
                            const std::vector<std::int32_t>& columns) const {
  std::string values = "(" + User() + ", " + Report() + keys;
  for (const std::int32_t column : columns) values += ", " + Literal(grid_.TextMatrix(row, column));
  for (std::int32_t c = 0; c < EmptyColumns(); ++c) values += ", ''";
  return values + ")";
}

void Staging::StageHeader() {
  const std::string table =
      transposed_ ? "tblQDLCrystalReportHeader" : "tblVorekCrystalReportHeader";
  OpenSlot(slot_, "Select * from sysobjects where name like '" + table + "'");
  const bool exists = slot_.RecordCount() > 0;
  slot_.Close();
  if (!exists) return;
  OpenSlot(slot_, "Delete " + table + " Where UserID=" + User());
  const std::vector<std::int32_t> columns = ShownColumns();
  OpenSlot(slot_, Head(table, "", columns.size()) + Values("", 0, columns));
}

void Staging::StageRows() {
  const std::vector<std::int32_t> columns = RowColumns();
  const std::string head = Head(kRowTable, ", Sequence", columns.size());
  std::vector<std::string> rows;
  std::int32_t sequence = 0;
  const bool heights = grid_.RowHeightsDiffer();
  for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
    if (heights && grid_.RowHeight(row) == 0) continue;
    rows.push_back(Values(", " + std::to_string(++sequence), row, columns));
    if (rows.size() == kRowsAStatement) RunRows(head, std::exchange(rows, {}));
  }
  RunRows(head, rows);
}

// Many rows go by one statement; where that is refused, they go one by one up to the row that the
// database refuses.
void Staging::RunRows(const std::string& head, const std::vector<std::string>& rows) {
  if (rows.empty()) return;
  std::string text = head;
  for (const std::string& row : rows) text += (&row == rows.data() ? "" : ", ") + row;
  if (IgnoreErrors([&] { OpenSlot(slot_, text); })) return;
  for (const std::string& row : rows) OpenSlot(slot_, head + row);
}

// --- What the template is given besides
// -----------------------------------------------------------

void AddParameters(ReportContext& report, PrintJob& job) {
  Recordset& slot = report.process.dten().rssqlGeneral1;
  for (const ParameterValue& value : report.process.main.ParameterValues) {
    OpenSlot(slot, "Select isnull(Name,'') as Name From tblVorekReportParameter Where ReportID=" +
                       std::to_string(report.state.ReportID) +
                       " and ParameterID=" + std::to_string(value.parameter_id));
    const std::string name = slot.AtEnd() ? "" : TextOf(slot, "Name");
    const bool exists = !slot.AtEnd();
    slot.Close();
    const std::string& text = value.display_value;
    if (!exists || text::TrimView(text).empty() || text == "''") continue;
    const std::string formula = text::Replace(name + "='" + text + "'", "''", "'");
    std::int32_t index = 0;
    job.AddFormula(index, formula);
    job.AddFormula(index, formula);
  }
}

void AddIdentity(ReportContext& report, PrintJob& job) {
  const MainModule& main = report.process.main;
  const DateTime now = report.process.clock().Now();
  const std::string user = std::to_string(report.state.UserID);
  const std::string formulas[] = {"UserID=" + user,
                                  "fmlUserID=" + user,
                                  "$-1='" + main.UserFullName + "'",
                                  "$-2='" + main.EmployeeFullName + "'",
                                  "$-3='" + main.PositionName + "'",
                                  "$-4='" + PersianDate(now) + "'",
                                  "$-5='" + TimeOfDay(now) + "'"};
  std::int32_t index = 0;
  for (const std::string& formula : formulas) {
    IgnoreErrors([&] { job.AddFormula(index, formula); });
    ++index;
  }
}

// The report's own view over its staged rows; "" where there is none.
std::string ViewOf(Process& process, std::int32_t report_id) {
  const std::string view = "vwVorekCrystalReport_" + std::to_string(report_id);
  Recordset& slot = process.dten().rssqlGeneral5;
  OpenSlot(slot, "Select * from sysobjects where Name = '" + view + "'");
  const bool exists = slot.RecordCount() > 0;
  slot.Close();
  return exists ? view : "";
}

std::string QueryOn(ReportContext& report, const std::string& source) {
  const std::string id = std::to_string(report.state.ReportID);
  return "Select * from " + source + " Where UserID = " + std::to_string(report.state.UserID) +
         " and ReportID=" + id;
}

}  // namespace

void StageRows(ReportContext& report) { Staging(report).Run(); }

std::string StagedSource(Process& process, std::int32_t report_id) {
  const std::string view = ViewOf(process, report_id);
  return view.empty() ? kRowTable : view;
}

namespace {

void Print(ReportContext& report, const std::string& templatePath, bool list) {
  Windows& windows = report.process.windows();
  PrintJobs* const jobs = report.process.services.print_jobs.get();
  if (jobs == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "در اين برنامه چاپ با الگو ممكن نيست: " + templatePath);
  }
  windows.SetMousePointer(kHourglass);
  StageRows(report);
  const std::unique_ptr<PrintJob> job = jobs->Make();
  job->ReportFilePath(templatePath);
  job->DatabaseConnection(report.process.main.ConnectionText);
  IgnoreErrors([&] { AddParameters(report, *job); });
  AddIdentity(report, *job);
  job->DataQuery(
      QueryOn(report, list ? kRowTable : StagedSource(report.process, report.state.ReportID)));
  job->OutputTarget(0);
  job->StartJob(1);
  windows.SetMousePointer(0);
}

}  // namespace

void PrintCrystal(ReportContext& report, const std::string& templatePath) {
  Print(report, templatePath, false);
}

void PrintList(ReportContext& report, const std::string& templatePath) {
  Print(report, templatePath, true);
}

void PrintCrystalOrList(ReportContext& report, const std::string& templatePath,
                        const std::function<std::string()>& make_list) {
  constexpr int kYes = 1;
  try {
    PrintCrystal(report, templatePath);
    return;
  } catch (const Error& error) {
    if (!error.Is(ErrorNumber::kBadTemplate)) throw;
    report.process.windows().SetMousePointer(0);
    report.notices.ShowMessage("خطا", error.Description());
  }
  if (report.notices.ShowConfirm("چاپ", "گزارش بدون الگو چاپ شود؟") != kYes) return;
  PrintList(report, make_list());
}

}  // namespace vorek
