#include "engine/entry_points.h"

#include <algorithm>

#include "catalog/report_row.h"
#include "engine/form_ask_user_report.h"
#include "engine/form_report.h"
#include "engine/query_text.h"
#include "engine/shared_helpers.h"
#include "platform/attempt.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// One empty row; the others go with the result behind them.
void EmptyRows(Grid& grid) {
  const std::int32_t row = std::min(grid.Row(), 1);
  const bool redraw = grid.Redraw();
  grid.SetRedraw(false);  // no row is selected on the way
  grid.SetRows(1);
  grid.SetRows(2);
  grid.SetRow(row);
  grid.SetRedraw(redraw);
}

void DropMarks(ReportControl& control, Recordset& children) {
  Grid& grid = control.flxMain;
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const double id = text::NumericPrefix(grid.CellView(row, control.state.IDColumn + 1, scratch));
    children.SetFilter("ParentID = " + text::PlainNumber(id));
    if (children.RecordCount() > 0) continue;
    std::string mark = grid.TextMatrix(row, 0);
    if (!mark.ends_with('+')) continue;
    mark.pop_back();
    grid.WriteCell(row, 0, mark);
  }
}

void AskSwitch(Process& process) {
  constexpr std::int32_t kReportSwitch = 123;  // of tblVorekSystemParameters
  process.main.SystemParameter123 = SystemParameter(process.dten().rssqlGeneral1, kReportSwitch);
}

// The whole number behind the first "=", -1 for none.
std::int32_t FirstValue(const std::string& parameter_string) {
  const std::size_t equal = parameter_string.find('=');
  if (equal == std::string::npos) return -1;
  return text::ToInt32(text::NumericPrefix(parameter_string.substr(equal + 1)));
}

FormAskUser& NewDialog(ReportControl& control, const std::string& parameter_string) {
  control.aFormAskUser =
      std::make_unique<FormAskUser>(control.world.process, control.world.messages);
  FormAskUser& form = *control.aFormAskUser;
  form.on_search = [&control](const std::string& query) { control.SearchFromDialog(query); };
  form.PeriodID = control.state.PeriodID;
  form.Title = control.state.Title;
  form.VorekParameters1.GivenValue = FirstValue(parameter_string);
  return form;
}

void RaiseRecorded(ReportControl& control, FormReport& form) {
  ReportEvents& events = control.events;
  if (form.InvokeViewRecorded && events.InvokeView) {
    events.InvokeView(form.FormTypeID, form.UniqueWC, form.InvokedValueStr);
  }
  if (form.InvokeClearShowRecorded && events.InvokeClearShow) {
    events.InvokeClearShow(form.FormTypeID, form.InvokedValueStr);
  }
}

}  // namespace

void ShowWithParams(ReportControl& control, std::int32_t id) {
  control.LoadForEntry(id, "");
  AskSwitch(control.world.process);
  std::unique_ptr<FormAskUserReport>& form = control.world.form_ask_user_report;
  std::int32_t& last = control.world.process.main.LastAskReportID;
  if (form != nullptr && form->Loaded() && last == id) {
    form->ShowModal();
    return;
  }
  if (form != nullptr) form->Unload();
  form = std::make_unique<FormAskUserReport>(control.world);
  last = id;
  form->ShowSearch(id);
}

void ViewRepotRelations(ReportControl& control, std::int32_t id,
                        const std::string& parameter_string) {
  Process& process = control.world.process;
  control.LoadForEntry(id, parameter_string);
  ReportState& state = control.state;
  std::string query = state.IsStoredProcedure ? state.roughSQL : state.SQLQuery;
  FillMarkers(process, id, query, parameter_string);
  AskSwitch(process);
  const bool filled = !text::Contains(query, "@");
  if (filled) state.QueryText = query;
  process.data.ForgetInterruption();
  const bool confirmed = NewDialog(control, parameter_string).View(id, query);
  if (confirmed || filled) {
    control.Refresh(false, "", "");
  } else if (const auto lost = process.data.Interruption()) {
    // A dialog that couldn't be made asks nothing.
    throw Error(*lost);
  }
}

void ViewReportWithoutParameters(ReportControl& control, std::int32_t called,
                                 const std::string& parameter_string, const std::string& title) {
  Process& process = control.world.process;
  AskSwitch(process);
  if (parameter_string.empty() || called <= 0) return;
  FormReport& form = control.NewWindow();
  form.OleConnectionString = process.dten().cnn.ConnectionString();
  form.PositionID = process.main.GlobalPositionID;
  form.EmployeeID = process.main.GlobalEmployeeID;
  form.UserID = process.main.GlobalUserID;
  form.SetCaption(title);
  form.ParentID = control.state.local_ParentID;
  form.CallerID = control.state.ReportID;
  control.flxMain.SetMousePointer(11);
  const std::optional<Error> error =
      Attempt([&] { form.ViewSystemReport(called, parameter_string); });
  control.flxMain.SetMousePointer(0);
  // A window that isn't on the screen holds nothing.
  if (!form.Shown()) form.Unload();
  if (error) throw Error(*error);
  RaiseRecorded(control, form);
}

void ClearReport(ReportControl& control) {
  control.state.ClearedRow = control.Context().ActiveGrid().Row();
  control.state.ReportID = -1;
  EmptyRows(control.flxMain);
  EmptyRows(control.flxTranspose);
}

bool SetNull(ReportControl& control) {
  control.CloseWindows();
  // A form over an empty query has no members.
  std::string no_query;
  IgnoreErrors([&] { control.VorekParameters1.View(-1, no_query, control.Width()); });
  control.state.FoundRows = -1;
  IgnoreErrors([&] { ResetGrid(control.flxMain); });
  IgnoreErrors([&] { ResetGrid(control.flxTranspose); });
  UncacheReport(control.world.process.main, control.state.ReportID);
  return false;
}

bool DropUnusedRows(ReportControl& control) {
  if (!control.state.MakeTree()) return false;
  Recordset& slot = control.world.process.dten().rssqlGeneral1;
  const std::vector<CachedReport>& cache = control.world.process.main.ReportCache;
  const auto found = std::find_if(cache.begin(), cache.end(), [&](const CachedReport& report) {
    return report.report_id == control.state.ReportID;
  });
  IgnoreErrors([&] {
    slot.Close();
    if (found != cache.end()) slot.SetSource(found->source);
    slot.SetFilter("");
    slot.Open();
    DropMarks(control, slot);
  });
  IgnoreErrors([&] { slot.SetFilter(""); });
  slot.Close();
  return false;
}

}  // namespace vorek
