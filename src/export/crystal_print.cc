#include "export/crystal_print.h"

#include <optional>
#include <utility>
#include <vector>

#include "catalog/report_row.h"
#include "platform/attempt.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "vorek/print_job.h"

namespace vorek {
namespace {

constexpr int kHourglass = 11;
constexpr std::int32_t kColumns = 50;  // of the staging tables
constexpr std::size_t kRowsAStatement = 300;
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
  Staged(DataSession& data, Recordset& slot) : data_(data), slot_(slot) {
    data_.ForgetInterruption();
    open_ = IgnoreErrors([&] { OpenSlot(slot_, "Begin Transaction"); });
  }
  ~Staged() {
    if (open_) IgnoreAllErrors([this] { Commit(); });
  }
  // Rows that nobody keeps would print as none. A transaction that can't end keeps others waiting.
  void Commit() {
    if (!std::exchange(open_, false)) return;
    if (const auto error = Attempt([this] { OpenSlot(slot_, "Commit Transaction"); })) {
      IgnoreAllErrors([this] { OpenSlot(slot_, "Rollback Transaction"); });
      // A connection that was lost on the way took its transaction along.
      throw Error(data_.Interruption().value_or(*error));
    }
  }
  Staged(const Staged&) = delete;
  Staged& operator=(const Staged&) = delete;

 private:
  DataSession& data_;
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
    Staged staged(report_.process.data, slot_);
    OpenSlot(slot_, std::string("Delete ") + kRowTable + " Where UserID=" + User());
    StageHeader();
    StageRows();
    staged.Commit();
  }

 private:
  std::string User() const { return std::to_string(report_.state.UserID); }
  std::string Report() const { return std::to_string(report_.state.ReportID); }

  void StageHeader();
  void StageRows();
  void RunRows(std::size_t columns, const std::vector<std::string>& rows);
  // The columns of the rows: all of flxMain, those on show of flxTranspose.
  std::vector<std::int32_t> RowColumns() const;
  std::vector<std::int32_t> ShownColumns() const;
  std::string Head(const std::string& table, const char* keys, std::size_t written) const;
  std::string Texts(std::int32_t row, const std::vector<std::int32_t>& columns) const;
  // One row's values: of the user and the report, those that are given, empty texts from Cols on.
  std::string Row(const std::string& given) const { return Keys() + given + EmptyTexts(); }
  std::string Keys() const { return User() + ", " + Report(); }
  std::string EmptyTexts() const;

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
  return head + ")";
}

std::string Staging::Texts(std::int32_t row, const std::vector<std::int32_t>& columns) const {
  std::string texts;
  for (const std::int32_t column : columns) texts += ", " + Literal(grid_.TextMatrix(row, column));
  return texts;
}

std::string Staging::EmptyTexts() const {
  std::string texts;
  for (std::int32_t c = grid_.Cols(); c <= kColumns; ++c) texts += ", ''";
  return texts;
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
  OpenSlot(slot_, Head(table, "", columns.size()) + " Values (" + Row(Texts(0, columns)) + ")");
}

void Staging::StageRows() {
  const std::vector<std::int32_t> columns = RowColumns();
  std::vector<std::string> rows;
  std::int32_t sequence = 0;
  const bool heights = grid_.RowHeightsDiffer();
  for (std::int32_t row = 1; row < grid_.Rows(); ++row) {
    if (heights && grid_.RowHeight(row) == 0) continue;
    rows.push_back(std::to_string(++sequence) + Texts(row, columns));
    if (rows.size() == kRowsAStatement) RunRows(columns.size(), std::exchange(rows, {}));
  }
  RunRows(columns.size(), rows);
}

// Many rows go by one statement, which names the texts that are the same in all of them once; where
// that is refused, they go one by one up to the row that the database refuses.
void Staging::RunRows(std::size_t columns, const std::vector<std::string>& rows) {
  if (rows.empty()) return;
  const std::string head = Head(kRowTable, ", Sequence", columns);
  std::string text = head + " Select " + Row(", s.*") + " From (Values ";
  for (const std::string& row : rows)
    text.append(&row == rows.data() ? "(" : ", (").append(row) += ")";
  text += ") As s (Sequence";
  for (std::size_t k = 1; k <= columns; ++k) text += ", Column" + std::to_string(k);
  if (IgnoreErrors([&] { OpenSlot(slot_, text + ")"); })) return;
  for (const std::string& row : rows) OpenSlot(slot_, head + " Values (" + Row(", " + row) + ")");
}

// --- What the template is given besides
// -----------------------------------------------------------

// The name of a parameter of the report; none if it isn't there.
std::optional<std::string> NameOf(ReportContext& report, std::int32_t parameter_id) {
  Recordset& slot = report.process.dten().rssqlGeneral1;
  OpenSlot(slot, "Select isnull(Name,'') as Name From tblVorekReportParameter Where ReportID=" +
                     std::to_string(report.state.ReportID) +
                     " and ParameterID=" + std::to_string(parameter_id));
  std::optional<std::string> name;
  if (!slot.AtEnd()) name = TextOf(slot, "Name");
  slot.Close();
  return name;
}

// One that can't be read, or that the job doesn't take, keeps none of the others away.
void AddParameters(ReportContext& report, PrintJob& job) {
  for (const ParameterValue& value : report.process.main.ParameterValues) {
    const std::string& text = value.display_value;
    std::optional<std::string> name;
    IgnoreErrors([&] { name = NameOf(report, value.parameter_id); });
    if (!name || text::TrimView(text).empty() || text == "''") continue;
    const std::string formula = text::Replace(*name + "='" + text + "'", "''", "'");
    std::int32_t index = 0;
    IgnoreErrors([&] { job.AddFormula(index, formula); });
    IgnoreErrors([&] { job.AddFormula(index, formula); });
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
  AddParameters(report, *job);
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
