#include "drill/related_reports.h"

#include <algorithm>
#include <array>
#include <utility>

#include "catalog/report_row.h"
#include "drill/cell_number.h"
#include "drill/form_launch.h"
#include "drill/query_columns.h"
#include "grid/summary_label.h"
#include "text/key_list.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::string Marker(std::int32_t parameter) { return "@" + std::to_string(parameter); }

bool HasText(const Grid& grid, std::int32_t row, std::int32_t column) {
  std::string scratch;
  return grid.ColWidth(column) >= 1 && !grid.CellView(row, column, scratch).empty();
}

bool BeginsWithDigit(std::string_view text) {
  text = text::TrimView(text);
  return !text.empty() && text[0] >= '0' && text[0] <= '9';
}

// The first column on show with a text that is no number, else the last one.
std::int32_t TitleColumn(const Grid& grid, std::int32_t row) {
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    if (HasText(grid, row, column) && !BeginsWithDigit(grid.TextMatrix(row, column))) return column;
  }
  return grid.Cols() - 1;
}

bool HasAnyText(const Grid& grid, std::int32_t row) {
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    if (HasText(grid, row, column)) return true;
  }
  return false;
}

// The column with exactly that header, hidden ones too; -1 for none.
std::int32_t ColumnOfHeader(const Grid& grid, const std::string& header) {
  std::string scratch;
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    if (grid.CellView(0, column, scratch) == header) return column;
  }
  return -1;
}

// The accounting reports name the account in the title of the report below them. Each letter of a
// pattern stands for itself, a number in braces for a cell of the row.
struct TitlePattern {
  std::int32_t report;
  const char* rest;
};
constexpr std::array<TitlePattern, 5> kTitles = {{{2834, " : {1} - {2}"},
                                                  {2840, " : {1} - {12}، {2}"},
                                                  {2842, " : {1} - {12}، {2}"},
                                                  {2843, " : {1} - {12}، {2}"},
                                                  {2846, " : {1} - {2}، {8}"}}};

const TitlePattern* PatternOf(std::int32_t report_id) {
  const auto* const found = std::find_if(
      kTitles.begin(), kTitles.end(), [&](const auto& title) { return title.report == report_id; });
  return found == kTitles.end() ? nullptr : found;
}

std::string WindowTitle(const ReportContext& report, const std::string& title, std::int32_t row) {
  const TitlePattern* const pattern = PatternOf(report.state.ReportID);
  if (pattern == nullptr) return title;
  std::string text = pattern->rest;
  for (const std::int32_t column : {1, 2, 8, 12}) {
    const std::string cell =
        column < report.flxMain.Cols() ? report.flxMain.TextMatrix(row, column) : "";
    text = text::Replace(text, "{" + std::to_string(column) + "}", cell);
  }
  return title + text;
}

// A link as its rows give it: the report to open and the parameter string for it.
struct Link {
  std::int32_t called = -1;
  std::string title;
  std::string parameters;
  bool Leads() const { return called >= 1 && !parameters.empty(); }
};

// Puts a number back when it goes.
struct Kept {
  std::int32_t& field;
  std::int32_t value;
  ~Kept() { field = value; }
};

class MainDrill {
 public:
  MainDrill(ReportContext& report, DrillHost& host)
      : report_(report), host_(host), state_(report.state), grid_(report.flxMain) {}

  void Run() {
    const bool secondary = std::exchange(state_.SecondaryWanted, false);
    if (host_.RaiseDblClick()) return;
    row_ = grid_.Row();
    if (state_.ReportID == -1) return;
    if (grid_.Cols() <= 0 || row_ < 1 || HasLabel(grid_, row_, kSumLabel)) return;
    if (state_.ShowPopupTree && text::Contains(grid_.TextMatrix(row_, 0), "+")) {
      OpenChildren();
      return;
    }
    const Link link = ReadLink(secondary);
    if (!link.Leads()) {
      LaunchForm(report_, host_, row_);
    } else if (row_ != 1 || HasAnyText(grid_, row_)) {
      Open(link);
    }
  }

 private:
  void OpenChildren();
  Link ReadLink(bool secondary);
  void AddPiece(const Recordset& row, std::string& parameters);
  void Open(const Link& link);
  bool IsStale();

  ReportContext& report_;
  DrillHost& host_;
  ReportState& state_;
  Grid& grid_;
  std::int32_t row_ = -1;
};

// The same report in a window of its own, on the children of the row.
void MainDrill::OpenChildren() {
  state_.local_ParentID = -1;
  if (state_.ParentIDColumn <= 0) {
    LaunchForm(report_, host_, row_);
    return;
  }
  // The column of the ordinal itself, which is the field before PARENTID.
  state_.local_ParentID = text::TextToNumber(grid_.TextMatrix(row_, state_.ParentIDColumn));
  const Kept kept{state_.ParentID, std::exchange(state_.ParentID, state_.local_ParentID)};
  const std::string name = grid_.TextMatrix(row_, TitleColumn(grid_, row_));
  host_.OpenReport(state_.ReportID, state_.ListOfParameters, state_.Title + " - " + name);
}

// An ordinary double click takes the secondary link where there is no other one.
Link MainDrill::ReadLink(bool secondary) {
  Recordset& slot = report_.process.dten().rssqlGeneral1;
  const std::string all =
      "Select *, IsNull((Select IsNull(Title,'') From tblVorekReport Where ID=CalledReportID),'') "
      "as InvRepTitle from tblVorekRelatedReports Where CallerReportID=" +
      std::to_string(state_.ReportID);
  OpenSlot(slot, all + (secondary ? " AND isSecondary = 1" : " and isnull(isSecondary,0)<>1") +
                     " order by isnull(isSecondary,0)");
  if (slot.RecordCount() == 0) OpenSlot(slot, all + (secondary ? " AND isSecondary = 1" : ""));
  Link link;
  if (!slot.AtEnd()) {
    link.called = NumberOf(slot, "CalledReportID");
    link.title = TextOf(slot, "InvRepTitle");
  }
  for (; !slot.AtEnd(); slot.MoveNext()) AddPiece(slot, link.parameters);
  slot.Close();
  return link;
}

void MainDrill::AddPiece(const Recordset& row, std::string& parameters) {
  const std::string piece = "&@" + TextOf(row, "CalledParameterID") + "=";
  const std::string header = TextOf(row, "CallerReportColumn");
  const std::int32_t parameter = text::TextToNumber(TextOf(row, "CallerParameterID"));
  if (header.empty()) {
    if (parameter == -1) return;
    parameters += piece + getParameterValue(state_.ListOfParameters, Marker(parameter));
    return;
  }
  const std::int32_t column = ColumnOfHeader(grid_, header);
  if (column != -1) parameters += piece + grid_.TextMatrix(row_, column);
}

void MainDrill::Open(const Link& link) {
  constexpr std::array<std::int32_t, 5> kChangedBelow = {2846, 2834, 2840, 2842, 2843};
  const std::string title = WindowTitle(report_, link.title, row_);
  Recordset& slot = report_.process.dten().rssqlGeneral2;
  // Who may not write still drills.
  IgnoreErrors([&] {
    OpenSlot(slot, "Delete tblVorekReportNeedRefresh Where UserID = " +
                       std::to_string(report_.process.main.GlobalUserID) +
                       " and ReportID = " + std::to_string(state_.ReportID));
  });
  const std::int32_t report_id = state_.ReportID;
  host_.OpenReport(link.called, link.parameters, title);
  const bool refreshes =
      std::find(kChangedBelow.begin(), kChangedBelow.end(), report_id) != kChangedBelow.end();
  if (!refreshes || !IsStale()) return;
  grid_.SetMousePointer(11);
  host_.RunAgain();
  grid_.SetMousePointer(0);
}

bool MainDrill::IsStale() {
  Recordset& slot = report_.process.dten().rssqlGeneral2;
  OpenSlot(slot, "Select * from tblVorekReportNeedRefresh Where UserID = " +
                     std::to_string(report_.process.main.GlobalUserID) +
                     " and ReportID = " + std::to_string(state_.ReportID));
  const bool stale = slot.RecordCount() != 0;
  slot.Close();
  return stale;
}

void AddTransposePiece(const ReportContext& report, const Recordset& row, std::string& parameters) {
  const Grid& grid = report.flxTranspose;
  const std::string key = Marker(text::TextToNumber(TextOf(row, "ParameterID")));
  const std::string field = TextOf(row, "PassingField");
  const std::int32_t parameter = text::TextToNumber(TextOf(row, "CallerParameterID"));
  if (!field.empty()) {
    const std::int32_t column = ColumnOfHeader(grid, field);
    if (column != -1) setParameterValue(parameters, key, grid.TextMatrix(grid.Row(), column));
  } else if (parameter != -1) {
    setParameterValue(parameters, key,
                      getParameterValue(report.state.ListOfParameters, Marker(parameter)));
  }
}

Link ReadTransposeLink(ReportContext& report) {
  Recordset& slot = report.process.dten().rssqlGeneral1;
  OpenSlot(slot,
           "Select *, IsNull((Select IsNull(Title,'') From tblVorekReport Where "
           "ID=CallerReportID),'') as invokedTitle from tblVorekRelatedReports Where "
           "CallerReportID=" +
               std::to_string(report.state.ReportID));
  Link link;
  if (!slot.AtEnd()) {
    link.called = NumberOf(slot, "CallerReportID");
    link.title = TextOf(slot, "invokedTitle");
  }
  for (; !slot.AtEnd(); slot.MoveNext()) AddTransposePiece(report, slot, link.parameters);
  slot.Close();
  return link;
}

}  // namespace

void DrillFromMain(ReportContext& report, DrillHost& host) { MainDrill(report, host).Run(); }

void DrillFromTranspose(ReportContext& report, DrillHost& host) {
  const Grid& grid = report.flxTranspose;
  const std::int32_t row = grid.Row();
  if (report.state.ReportID == -1 || row < 1 || row >= grid.Rows()) return;
  const Link link = ReadTransposeLink(report);
  if (link.Leads()) {
    host.OpenReport(link.called, link.parameters, link.title);
    return;
  }
  ReportState& state = report.state;
  if (state.SQLSP.empty()) return;
  if (state.ReportFormTypeID != -1) {
    state.FormTypeID = state.ReportFormTypeID;
  } else if (const auto column = FindColumn("FormTypeID", grid)) {
    IgnoreErrors([&] { state.FormTypeID = CellWholeNumber(grid, row, *column); });
  }
}

}  // namespace vorek
