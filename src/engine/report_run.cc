#include "engine/report_run.h"

#include <algorithm>
#include <optional>

#include "engine/pass_bar.h"
#include "engine/query_text.h"
#include "engine/rights.h"
#include "engine/shared_helpers.h"
#include "engine/special_reports.h"
#include "grid/column_sort.h"
#include "grid/cross_table.h"
#include "grid/expression_columns.h"
#include "grid/merged_rows.h"
#include "grid/tree_rows.h"
#include "grid/tree_sort.h"
#include "platform/attempt.h"
#include "text/number.h"
#include "text/utf8.h"
#include "totals/group_totals.h"
#include "totals/summary_rows.h"

namespace vorek {
namespace {

constexpr std::int32_t kLargeGrid = 20000;  // rows

std::string LeadingLetters(const std::string& text) {
  const auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return {text.begin(), std::find_if_not(text.begin(), text.end(), letter)};
}

}  // namespace

bool ReportRun::Run(bool do_filter, const std::string& parameter_string) {
  const Messages::Run telling(control_.world.messages);
  if (!parameter_string.empty()) state_.ShowFlatternParameters = false;
  state_.RememberedRow = report_.ActiveGrid().Row();
  state_.ParameterString = parameter_string;
  state_.StopReason.clear();
  state_.Denied = false;
  control_.general.setReport(control_.flxMain, state_.ReportID);
  if (state_.ReportID == -1) return false;

  Decision decision = Decision::kStop;
  auto error = Attempt([&] {
    decision = DecideText(do_filter, parameter_string);
    if (decision != Decision::kRun) return;
    PutTokens();
    ApplyStoredLayout(report_, ignore_errors_);
  });
  // A dialog that couldn't be made asks nothing.
  if (!error && decision == Decision::kStop) error = process_.data.Interruption();
  if (error) {
    // Only what the user would take for an empty report is told.
    if (error->Is(ErrorNumber::kConnection) || error->Is(ErrorNumber::kTimeout) ||
        error->Is(ErrorNumber::kOutOfMemory)) {
      Fail(*error);
    } else {
      state_.StopReason = error->Description();
      SilentExit(error->Number());
    }
    return false;
  }
  if (decision != Decision::kRun) {
    // Rows of the report before must not stand under this one's title or panel.
    if (decision == Decision::kWait || state_.NewDefinition) control_.EmptyGrids();
    process_.windows().SetMousePointer(0);
    return decision == Decision::kWait;
  }
  if (state_.QueryText.empty()) {
    control_.EmptyGrids();
    process_.windows().SetMousePointer(0);
    return false;
  }
  return RunText(parameter_string);
}

bool ReportRun::RunText(const std::string& parameter_string) {
  PassWatch& watch = process_.watch;
  const PassWatch::Pass run(watch, PassWatch::Leaves::kNothing);
  bool filled = false;
  std::optional<Error> error;
  {
    // Nobody sees a grid that is half made.
    const Grid::Hold main(control_.flxMain);
    const Grid::Hold cross_table(control_.flxTranspose);
    error = Attempt([&] {
      Fill(parameter_string);
      filled = true;
      Present();
    });
  }
  if (error && (!filled || error->Is(ErrorNumber::kOutOfMemory))) {
    Fail(*error);
    return false;
  }
  if (watch.Cancelled()) {
    Fail(Error(ErrorNumber::kCancelled, "اجراي گزارش لغو شد."));
    return false;
  }
  // A step that was passed over for want of the database may be a column or a total.
  if (const auto lost = process_.data.Interruption(); lost && !error) {
    Fail(*lost);
    return false;
  }
  if (!error) return true;
  state_.StopReason = error->Description();
  SilentExit(error->Number());
  return false;
}

// --- Deciding the text -------------------------------------------------------------------------

ReportRun::Decision ReportRun::DecideText(bool do_filter, const std::string& parameter_string) {
  const bool confirmed = state_.ShowFlatternParameters && control_.VorekParameters1.userChoice;
  const bool marked = text::Contains(state_.roughSQL, "@");
  if (!marked || (do_filter && !confirmed)) {
    state_.QueryText = state_.roughSQL;
    state_.AnswersPut = false;
  }
  if (!marked) return Decision::kRun;
  if (!text::Contains(state_.QueryText, "@")) return Decision::kRun;
  if (!parameter_string.empty()) return Substitute(parameter_string);
  return state_.ShowFlatternParameters ? AskPanel() : AskDialog();
}

ReportRun::Decision ReportRun::Substitute(const std::string& parameter_string) {
  if (!SubstituteParameters(process_, state_.ReportID, state_.roughSQL, parameter_string)) {
    return Decision::kStop;
  }
  state_.QueryText = state_.roughSQL;
  state_.ListOfParameters = parameter_string;
  state_.LastParameterString = parameter_string;
  return Decision::kRun;
}

// The panel is on show; the run comes back through its Search event.
ReportRun::Decision ReportRun::AskPanel() {
  VorekParameters& panel = control_.VorekParameters1;
  if (!panel.userChoice) return state_.AnswersPut ? Decision::kRun : Decision::kWait;
  panel.userChoice = false;
  return panel.result ? Decision::kRun : Decision::kStop;
}

ReportRun::Decision ReportRun::AskDialog() {
  if (state_.AnswersPut) return Decision::kRun;
  ignore_errors_ = true;
  bool ok = false;
  IgnoreErrors([&] {
    control_.aFormAskUser = std::make_unique<FormAskUser>(process_, control_.world.messages);
    FormAskUser& form = *control_.aFormAskUser;
    // The form outlives this run: its menu entry shows it again.
    form.on_search = [&control = control_](const std::string& query) {
      control.SearchFromDialog(query);
    };
    form.Title = state_.Title;
    form.PeriodID = state_.PeriodID;
    ok = form.View(state_.ReportID, state_.roughSQL);
  });
  return ok ? Decision::kRun : Decision::kStop;
}

void ReportRun::PutTokens() {
  process_.windows().SetMousePointer(11);
  const DateTime now = process_.clock().Now();
  control_.datToday.SetValue({now.year, now.month, now.day});
  state_.QueryText =
      ReplaceTokens(state_.QueryText, TokenValuesOf(now, state_, process_.main.GlobalUserID));
}

// --- Running the query and filling the grid -----------------------------------------------------

void ReportRun::Fill(const std::string& parameter_string) {
  Grid& grid = control_.flxMain;
  state_.NewDefinition = false;
  grid.SetRedraw(false);
  control_.Progress.SetVisible(true);
  control_.Progress.ZOrder();
  control_.Progress.SetValue(25);
  // A large result and the one before it must not be held side by side.
  if (grid.Rows() > kLargeGrid) grid.Clear();
  OpenQuery(parameter_string);
  process_.windows().SetMousePointer(0);
  FollowUpProcedure();
  state_.QuerySource = Query().Source();
  CacheReport(process_.main, state_.ReportID, state_.QuerySource,
              static_cast<std::int16_t>(Query().FieldCount()));
  state_.QueryRecordCount = Query().IsOpen() ? Query().RecordCount() : -1;
  const ResultSetPtr result = Query().SharedResult();
  state_.FoundRows = result == nullptr ? -1 : static_cast<std::int32_t>(result->rows);
  DropTreeFilter();
  FindKeyFields();
  Grid& shown = state_.isTransposeFlexTree() ? control_.flxTranspose : grid;
  shown.SetTop(0);
  shown.SetHeight(control_.frameMain.Height());
  FilterTreeLevel();
  BindGrid();
  FillCells();
}

void ReportRun::OpenQuery(const std::string& parameter_string) {
  Query().Close();
  TakeFilter();
  if (state_.MakeSecure) ApplySecurityClause(process_, state_, state_.QueryText);
  process_.windows().SetMousePointer(11);
  if (parameter_string.empty() && PrepareSpecialReport(report_, state_.QueryText)) return;
  Query().Open(DropEmptyAliases(state_.QueryText));
}

// The slot is shared: what stands in it may be another control's filter. This one's has ended if
// the connection was bound again since.
void ReportRun::TakeFilter() {
  if (state_.FilterBinding != process_.data.Binding()) state_.Filter.clear();
  Query().SetFilter(state_.Filter);
}

// A tree filters its levels by itself.
void ReportRun::DropTreeFilter() {
  if (!state_.MakeTree()) return;
  Query().SetFilter("");
  state_.Filter.clear();
}

// A procedure that left no record set: its rows are read by the report's own query, or from the
// table of its name.
void ReportRun::FollowUpProcedure() {
  if (Query().IsOpen() || !state_.IsStoredProcedure) return;
  const std::string name = LeadingLetters(text::ReplaceIgnoreCase(state_.QueryText, "EXEC ", ""));
  Recordset& slot = process_.dten().rssqlGeneral2;
  OpenSlot(slot, "Select IsNull(SQLQuery,'') as SQLQuery from tblVorekReport Where ID=" +
                     std::to_string(state_.ReportID));
  const std::string reading = slot.AtEnd() ? "" : slot.Field("SQLQuery").Text();
  if (reading.empty()) {
    slot.Close();
    ShowTableOfProcedure(name);
    return;
  }
  process_.data.Rebind(process_.main.ConnectionText);
  state_.Filter.clear();
  Query().Open(reading);
}

// A procedure spX leaves its rows in the table tblX.
void ReportRun::ShowTableOfProcedure(const std::string& name) {
  const std::string rest = text::Mid(name, 3);
  Recordset& slot = process_.dten().rssqlGeneral2;
  OpenSlot(slot, "select * from sysobjects where type like 'U' and name like 'tbl" + rest + "'");
  const bool exists = slot.RecordCount() > 0;
  slot.Close();
  if (exists) Query().Open("Select * from tbl" + rest);
}

void ReportRun::FindKeyFields() {
  state_.ParentIDColumn = state_.IDColumn = -1;
  for (std::size_t i = 0; i < Query().FieldCount(); ++i) {
    const std::string name = text::ToUpper(Query().FieldName(i));
    if (name == "PARENTID") state_.ParentIDColumn = static_cast<std::int32_t>(i);
    if (name == "ID") state_.IDColumn = static_cast<std::int32_t>(i);
  }
}

void ReportRun::FilterTreeLevel() {
  if (!state_.MakeTree()) return;
  const bool below = state_.ParentID != 0 && state_.ParentID != -1;
  Query().SetFilter("ParentID = " + (below ? std::to_string(state_.ParentID) : "NULL"));
}

void ReportRun::BindGrid() {
  Grid& grid = control_.flxMain;
  grid.SetFixedCols(1);
  state_.FilledRows = Query().RecordCount();
  if (Query().FieldCount() == 0) {
    grid.Clear();
    grid.SetRows(2);
  } else if (Query().RecordCount() > 0) {
    grid.Bind(Query());
  } else {
    ShowHeadersOnly();
  }
}

void ReportRun::ShowHeadersOnly() {
  Grid& grid = control_.flxMain;
  grid.Clear();
  grid.SetRows(2);
  grid.SetCols(static_cast<std::int32_t>(Query().FieldCount()) + 1);
  grid.WriteCell(0, 0, "رديف");
  for (std::size_t i = 0; i < Query().FieldCount(); ++i) {
    grid.WriteCell(0, static_cast<std::int32_t>(i) + 1, Query().FieldName(i));
  }
}

void ReportRun::FillCells() {
  state_.QueryFields = FieldsOf(Query());
  MakeFlexMerged(report_);
  MakeExpressionColumns(report_);
  FormCells(report_, state_.QueryFields);
  CompleteLayouts(report_, state_.QueryFields);
  if (!state_.isTransposedResult) AlignFlexes(report_, false);
  DropMissingTransposeColumns(report_);
  Advance();
  NumberRows();
  Query().Close();
  DropTreeFilter();
  Advance();
  ColorRows(report_);
  Advance();
  control_.flxMain.SetFixedCols(1);
  control_.flxMain.SetRedraw(true);
  control_.Progress.SetVisible(false);
  process_.windows().SetMousePointer(0);
}

void ReportRun::NumberRows() {
  Grid& grid = control_.flxMain;
  grid.WriteCell(0, 0, state_.MakeTree() ? "سطح" : "رديف");
  if (state_.MakeTree()) {
    MarkTopRows(report_, Query());
  } else {
    grid.NumberRows();
  }
}

void ReportRun::Advance() { control_.Progress.SetValue(control_.Progress.Value() + 25); }

// --- What follows a filled grid -----------------------------------------------------------------

void ReportRun::Present() {
  Grid& grid = control_.flxMain;
  const PassBar bar(control_);
  grid.ZOrder();
  state_.isTransposedResult = false;
  MakeStoredTotals();
  if (!state_.MakeTree() && state_.ReapplySort) {
    IgnoreErrors([&] { SortflxMain(report_, 0); });
  }
  if (state_.MakeTree()) {
    IgnoreErrors([&] { SortTree(report_, grid, 0); });
    IgnoreErrors([&] { SortTree(report_, control_.flxTranspose, 0); });
  }
  IgnoreErrors([&] { control_.RestoreRow(grid, state_.RememberedRow); });
  IgnoreErrors([&] { WidenSpecialReport(report_); });
  if (state_.MakeTransposeFlag) {
    IgnoreErrors([&] { ApplyTranspose(report_); });
  }
  IgnoreErrors([&] { MakeFirstGroupTotals(report_); });
  process_.windows().SetMousePointer(0);
  IgnoreErrors([&] { FocusResult(); });
}

void ReportRun::MakeStoredTotals() {
  Grid& grid = control_.flxMain;
  const std::int32_t cols = grid.Cols();
  for (std::int32_t column = 1; column < cols; ++column) {
    const ColumnLayout& layout = report_.layouts()[column];
    if (layout.make_sum) {
      IgnoreErrors([&] { grid.SetCol(column); });
      IgnoreErrors([&] { MakeSumRow(report_); });
    }
    if (layout.make_average) {
      IgnoreErrors([&] { grid.SetCol(column); });
      IgnoreErrors([&] { MakeAvgRow(report_); });
    }
  }
}

void ReportRun::FocusResult() {
  control_.FocusGrid();
  if (state_.isTransposedResult) return;
  control_.flxMain.SetCol(0);
  control_.flxMain.SetColSel(control_.flxMain.Cols() - 1);
}

// --- Failures ------------------------------------------------------------------------------------

void ReportRun::Fail(const Error& error) {
  process_.windows().SetMousePointer(0);
  control_.flxMain.SetRedraw(true);
  if (error.Is(ErrorNumber::kCancelled) &&
      process_.windows().TellCancelled("اجراي گزارش لغو شد.")) {
    SilentExit(error.Number());
    return;
  }
  const std::string detail = text::Contains(error.Description(), "Divide by zero")
                                 ? "اشکال تقسيم بر صفر"
                                 : error.Description();
  const auto number = static_cast<std::int32_t>(error.Number());
  control_.world.messages.DisplayError(number, "نمايش گزارش با اشکال مواجه شد.", detail, "اشکال",
                                       number);
  SilentExit(error.Number());
}

void ReportRun::SilentExit(long error_number) {
  process_.windows().SetMousePointer(0);
  control_.Progress.SetVisible(false);
  ResetGrid(control_.flxMain);
  state_.FoundRows = -1;
  control_.flxMain.SetVisible(true);
  control_.flxMain.ZOrder();
  ResetGrid(control_.flxTranspose);
  if (error_number == static_cast<long>(ErrorNumber::kConnection)) {
    IgnoreErrors([&] { process_.data.Rebind(process_.main.ConnectionText); });
  }
  CloseSlots();
  control_.flxMain.SetRedraw(true);
  if (!state_.MakeTree()) return;
  control_.flxMain.SetTop(0);
  control_.flxMain.SetHeight(control_.frameMain.Height());
}

void ReportRun::CloseSlots() {
  DtEn& dten = process_.dten();
  for (Recordset* slot : {&dten.rssqlQuery, &dten.rssqlGeneral1, &dten.rssqlGeneral2,
                          &dten.rssqlGeneral3, &dten.rssqlGeneral4}) {
    slot->Close();
  }
}

}  // namespace vorek
