#include "engine/report_control.h"

#include <algorithm>
#include <utility>

#include "catalog/report_row.h"
#include "engine/export_events.h"
#include "engine/flx_main_events.h"
#include "engine/flx_transpose_events.h"
#include "engine/form_report.h"
#include "engine/grid_events.h"
#include "engine/quick_search.h"
#include "engine/report_filter.h"
#include "engine/report_load.h"
#include "engine/report_run.h"
#include "engine/rights.h"
#include "engine/shared_helpers.h"
#include "platform/attempt.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kNoReport = -1;
constexpr std::int32_t kReportSwitch = 123;  // of tblVorekSystemParameters
constexpr int kF3 = 114;
constexpr int kF5 = 116;
constexpr int kP = 80;

void KeepWidth(ColumnLayoutTable& layouts, const Grid& grid, std::int32_t col) {
  if (col > ColumnLayoutTable::kLast) return;
  layouts[col].width = static_cast<std::int16_t>(std::min(grid.ColWidth(col), 32767));
}

// The totals that a user asked of one report aren't those of the next.
void ForgetTotals(MainModule& main) {
  for (ColumnLayoutTable* table : {&main.ColumnLayouts, &main.TransposeLayouts}) {
    for (std::int32_t column = 0; column <= ColumnLayoutTable::kLast; ++column) {
      (*table)[column].make_sum = (*table)[column].make_average = false;
    }
  }
}

// A grid's own look: what a report doesn't set must not stay from the one before.
void Undress(Grid& grid) {
  grid.SetFontSize(Grid::kDefaultFontSize);
  grid.SetRowHeightMin(0);
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    grid.SetColWidth(col, GridColumn::kDefaultWidth);
    grid.SetFixedAlignment(col, GridColumn::kDefaultFixedAlignment);
  }
}

}  // namespace

ReportControl::ReportControl(WorldState& shared, Control* parent, std::string name)
    : Frame(parent, std::move(name)), world(shared), Evaluation(shared.ForEvaluation()) {
  lblCaption.Move(0, 0, kCaptionWidth, 300);
  lblCaption.SetRightToLeft(true);
  lblCaption.SetAlignment(Label::kCentre);
  const std::pair<Button*, const char*> buttons[] = {
      {&cmdAdd, "جديد"}, {&cmdEdit, "ويرايش"}, {&cmdDelete, "حذف"}};
  for (const auto& [button, caption] : buttons) {
    button->Move(0, 0, 1000, 400);
    button->SetCaption(caption);
    button->SetVisible(false);
  }
  Progress.SetHeight(200);
  for (Control* hidden :
       {static_cast<Control*>(&Progress), static_cast<Control*>(&datToday),
        static_cast<Control*>(&VorekToday), static_cast<Control*>(&flxTranspose)}) {
    hidden->SetVisible(false);
  }
  flxMain.SetWatch(&shared.process.watch);
  flxTranspose.SetWatch(&shared.process.watch);
  general.Clear();
  general.Add(flxMain);
  general.Add(flxTranspose);
  ConnectEvents();
  Move(0, 0, 12000, 8000);
}

ReportControl::~ReportControl() = default;

void ReportControl::ConnectEvents() {
  on_resize = [this] { LayOut(); };
  VorekParameters1.on_search = [this](const std::string& query) { SearchFromPanel(query); };
  VorekParameters1.CanFold = true;
  VorekParameters1.on_content_change = [this] { Arrange(); };
  VorekParameters1.on_clear = [this] { ClearGrids(); };
  VorekParameters1.on_cancel = [this] {
    if (events.Cancel) events.Cancel();
    if (auto* const form = dynamic_cast<Form*>(Parent())) {
      form->Hide();
    } else if (Parent() != nullptr) {
      Parent()->SetVisible(false);
    }
  };
  flxMain.on_user_resize = [this](std::int32_t col) {
    KeepWidth(world.process.main.ColumnLayouts, flxMain, col);
    NoteDrawnWidth(main_widths_, flxMain, col);
  };
  flxTranspose.on_user_resize = [this](std::int32_t col) {
    KeepWidth(world.process.main.TransposeLayouts, flxTranspose, col);
    NoteDrawnWidth(transpose_widths_, flxTranspose, col);
  };
  ConnectGridEvents(*this);
  ConnectButtons();
}

// What a record is, the host knows.
void ReportControl::ConnectButtons() {
  cmdAdd.on_click = [this] {
    IgnoreErrors([&] {
      Recordset& slot = world.process.dten().rssqlGeneral2;
      OpenSlot(slot, "select * from tblVorekFormType");
      slot.Close();
    });
    if (events.AddClick) events.AddClick();
  };
  cmdEdit.on_click = [this] {
    if (events.EditClick) events.EditClick();
    if (state.isTransposedResult) {
      flxTranspose_DblClick(*this);
    } else {
      flxMain_DblClick(*this);
    }
  };
  cmdDelete.on_click = [this] {
    if (events.DeleteClick) events.DeleteClick();
  };
}

bool ReportControl::View(std::int32_t id, const std::string& parameter_string,
                         const std::string& caller_value) {
  Process& process = world.process;
  BindConnection();
  process.data.DropDead();
  process.data.ForgetInterruption();
  state.Denied = !HasReportRight(process, id, state.UserID);
  if (state.Denied) {
    world.messages.ShowMessage("خطا", "شما مجاز به مشاهده اين گزارش نيستيد.");
    return false;
  }
  process.main.SystemParameter123 = SystemParameter(process.dten().rssqlGeneral1, kReportSwitch);
  process.data.RebindTwice(process.main.ConnectionText);
  TakeUser();
  BeginReport(id, parameter_string, caller_value);
  const bool result = RunReport(true, parameter_string);
  process.main.SystemParameter123 = SystemParameter(process.dten().rssqlGeneral1, kReportSwitch);
  EndView();
  return result;
}

// The right to a report is asked on the connection that the report will use: another control of the
// world may have bound it to one of its own.
void ReportControl::BindConnection() {
  MainModule& main = world.process.main;
  if (main.ConnectionText == state.OleConnectionString) return;
  world.process.data.Rebind(state.OleConnectionString);
  main.ConnectionText = state.OleConnectionString;
}

void ReportControl::TakeUser() {
  Process& process = world.process;
  const int windows_version = process.windows().OsMajorVersion();
  if (windows_version == 4) process.main.KeyboardLayoutName = "00000401";
  if (windows_version == 5) process.main.KeyboardLayoutName = "00000429";
  process.main.GlobalUserID = state.UserID;
  process.main.GlobalPositionID = state.PositionID;
  process.main.GlobalEmployeeID = state.EmployeeID;
  LoadUserInfo(process);
}

// From here on the control holds the new report, or after a failure none: never one report's query
// under another's number and restrictions.
void ReportControl::BeginReport(std::int32_t id, const std::string& parameter_string,
                                const std::string& caller_value) {
  const std::optional<Error> error = Attempt([&] {
    state.ParameterString = parameter_string;
    state.CallerStringValue = caller_value;
    LoadReport(id);
  });
  if (!error) return;
  DropReport();
  throw Error(*error);
}

void ReportControl::LoadReport(std::int32_t id) {
  general.AddReport(flxMain, id);
  general.AddReport(flxTranspose, id);
  if (state.ReportID != id) ForgetTotals(world.process.main);
  state.ReportID = id;
  state.FormTypeID = state.FormID = -1;
  state.FormColumns = {};
  state.Forms = {};
  state.LastParameterString.clear();
  state.ListOfParameters.clear();
  state.ListOfVisualParameters.clear();
  state.ConfirmedValues.clear();
  state.Filter.clear();
  if (std::exchange(drawn_report_, id) != id) SetDrawnWidths({}, {});
  flxTranspose.SetVisible(false);
  flxMain.SetVisible(true);
  state.ReportDistributed = "توزيع شده";
  Undress(flxMain);
  LoadReportDefinition(*this, id);
  if (!state.ParameterString.empty()) {
    state.ShowFlatternParameters = false;
    LayOut();
  }
  if (!state.UseThisQuery.empty()) state.SQLQuery = state.roughSQL = state.UseThisQuery;
  if (id == kNoReport) EmptyGrids();
  frameMain.SetVisible(true);
  state.NewDefinition = true;
  state.AnswersPut = false;
  state.ReapplySort = true;
}

void ReportControl::DropReport() {
  state.ReportID = kNoReport;
  state.Title.clear();
  state.SQLQuery.clear();
  state.roughSQL.clear();
  state.QueryText.clear();
  lblCaption.SetCaption("");
  VorekParameters1.SetTag("ParametersShowed=FALSE");
  EmptyGrids();
  IgnoreErrors([&] { LayOut(); });
}

void ReportControl::EndView() {
  state.flxMainRows = flxMain.Rows();
  state.flxMainHeight = flxMain.Height();
  state.flxMainRowHeight = flxMain.Rows() >= 3 ? flxMain.RowHeight(1) : 310;
  IgnoreErrors([&] { FocusGrid(); });
  VorekParameters1.PeriodID = state.PeriodID;
  VorekParameters1.CallByReport = true;
  // A report that came with its values left the panel as it stood for another.
  if (state.ShowFlatternParameters) IgnoreErrors([&] { VorekParameters1.FillInitially(); });
}

// What can't be asked now, the run itself will tell.
bool ReportControl::Refresh(bool do_filter, const std::string& parameter_string,
                            const std::string&) {
  IgnoreErrors([&] { world.process.data.DropDead(); });
  world.process.data.ForgetInterruption();
  return RunReport(do_filter, parameter_string);
}

bool ReportControl::RunReport(bool do_filter, const std::string& parameter_string) {
  const bool result = ReportRun(*this).Run(do_filter, parameter_string);
  ApplyWidths();
  return result;
}

void ReportControl::SetDrawnWidths(DrawnWidths main, DrawnWidths transposed) {
  main_widths_ = std::move(main);
  transpose_widths_ = std::move(transposed);
  ApplyWidths();
}

// A run sets the widths of the catalogue.
void ReportControl::ApplyWidths() {
  ApplyDrawnWidths(main_widths_, flxMain);
  ApplyDrawnWidths(transpose_widths_, flxTranspose);
}

bool ReportControl::ReportRefreshOnChange() {
  state.ReapplySort = true;
  return Refresh(false, state.LastParameterString, state.CallerStringValue);
}

void ReportControl::ObjectEvent(const std::string& name) {
  if (text::EqualsIgnoreCase(name, "Changed")) ReportRefreshOnChange();
}

void ReportControl::KeyDown(int key_code, int shift) {
  auto code = static_cast<std::int16_t>(key_code);
  auto keys = static_cast<std::int16_t>(shift);
  if (events.KeyDown) events.KeyDown(code, keys);
  if (code == kF5) {
    state.ReapplySort = false;
    Refresh(false, state.LastParameterString, "");
  } else if (code == kP && keys != 0) {
    ExportExcel(*this, state.ReportID);
  } else if (code == kF3) {
    mnuQuickSearch_Click(*this);
  }
}

void ReportControl::GotFocus() {
  IgnoreErrors([&] { FocusGrid(); });
}

// A text that is refused leaves the connection that is in force.
void ReportControl::SetConnection(const std::string& text) {
  world.process.data.Check(text);
  state.OleConnectionString = text;
  world.process.main.ConnectionText = text;
  world.process.data.Rebind(text);
}

void ReportControl::TakeFilterAway() { SetReportFilter(*this, ""); }

void ReportControl::SetEditable(bool on) {
  state.Editable = on;
  LayOut();
}

void ReportControl::SetEnabledGrids(bool on) {
  state.Enabled = on;
  flxMain.SetEnabled(on);
  flxTranspose.SetEnabled(on);
}

void ReportControl::SetMainTopRow(std::int32_t row) { flxMain.SetTopRow(row > 0 ? row : 1); }

std::string ReportControl::CellText(std::int32_t row, std::int32_t col) {
  const Grid& grid = Context().ActiveGrid();
  return row < 0 || row >= grid.Rows() ? "" : grid.TextMatrix(row, col);
}

void ReportControl::SetTitle(const std::string& title) {
  state.Title = title;
  lblCaption.SetCaption(title);
  // A long title makes its label wider; the layout then centres it.
  const std::int32_t width = world.process.windows().TextWidth(title, 0) + 200;
  lblCaption.SetWidth(std::max(width, kCaptionWidth));
  lblCaption.SetLeft((Width() - lblCaption.Width()) / 2);
}

void ReportControl::CloseParent() {
  if (auto* const form = dynamic_cast<Form*>(Parent())) {
    form->Unload();
  } else if (events.CloseParent) {
    events.CloseParent();
  }
}

void ReportControl::ComeToFront() {
  if (auto* const form = dynamic_cast<Form*>(Parent())) {
    form->Show();
  } else if (events.ComeToFront) {
    events.ComeToFront();
  }
}

void ReportControl::LoadForEntry(std::int32_t id, const std::string& parameter_string) {
  world.process.data.RebindTwice(state.OleConnectionString);
  world.process.main.ConnectionText = state.OleConnectionString;
  TakeUser();
  BeginReport(id, parameter_string, "");
  state.ShowFlatternParameters = false;
  EmptyGrids();
  LayOut();
}

FormReport& ReportControl::NewWindow() {
  std::erase_if(windows_, [](const auto& window) { return !window->Loaded(); });
  windows_.push_back(std::make_unique<FormReport>(*this));
  return *windows_.back();
}

// A window may be in the midst of an event: it goes with the next one that is opened.
void ReportControl::CloseWindows() {
  for (const auto& window : windows_) window->Unload();
}

void ReportControl::TakeSearch(const std::string& query, const VorekParameters& form) {
  state.RememberedSearchRow = Context().ActiveGrid().Row();
  state.QueryText = query;
  state.AnswersPut = true;
  state.ListOfVisualParameters = text::Trim(form.ListOfVisualParameters);
  state.ListOfParameters = text::Trim(form.ListOfParameters);
  state.ConfirmedValues = form.ConfirmedValues();
}

void ReportControl::SearchFromPanel(const std::string& query) {
  TakeSearch(query, VorekParameters1);
  Refresh(false, "", "");
  IgnoreErrors([&] { RestoreRow(Context().ActiveGrid(), state.RememberedSearchRow); });
}

void ReportControl::SearchFromDialog(const std::string& query) {
  TakeSearch(query, aFormAskUser->VorekParameters1);
  // Without the menu a run is under way below the dialog and goes on by itself.
  if (state.AskFormFromMenu) Refresh(false, "", "");
  IgnoreErrors([&] { RestoreRow(Context().ActiveGrid(), state.RememberedSearchRow); });
}

void ReportControl::RestoreRow(Grid& grid, std::int32_t row) {
  if (row > grid.Rows() - 1) row = 0;
  if (row == 0 && grid.Rows() >= 2) row = 1;
  grid.SetRow(row);
  grid.SetColSel(grid.Cols() - 1);
}

void ReportControl::EmptyGrids() {
  ResetGrid(flxMain);
  ResetGrid(flxTranspose);
  flxTranspose.SetVisible(false);
  flxMain.SetVisible(true);
  state.isTransposedResult = false;
  state.QueryRecordCount = -1;
  state.FoundRows = -1;
  state.QueryFields.clear();
}

void ReportControl::ClearGrids() {
  state.FoundRows = -1;
  flxMain.SetSortedBy({});
  flxTranspose.SetSortedBy({});
  flxMain.SetRows(1);
  flxMain.SetRows(2);
  flxMain.SetFixedRows(1);
  flxMain.SetFixedCols(1);
  flxTranspose.SetRows(1);
  flxTranspose.SetRows(2);
  flxTranspose.SetCols(1);
  flxTranspose.SetCols(2);
  flxTranspose.SetFixedRows(1);
  flxTranspose.SetFixedCols(1);
}

void ReportControl::mnuShowAskForm_Click() {
  if (aFormAskUser == nullptr || text::Trim(aFormAskUser->Title).empty()) return;
  state.AskFormFromMenu = true;
  aFormAskUser->ShowModal();
  state.AskFormFromMenu = false;
}

}  // namespace vorek
