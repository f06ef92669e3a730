#include "engine/report_load.h"

#include <algorithm>

#include "catalog/report_row.h"
#include "grid/column_layout_pass.h"
#include "text/number.h"

namespace vorek {
namespace {

constexpr const char* kEmptyQuery = "Select id from syscolumns where id is null";

// A column that an older database may lack: the default stays if it can't be read.
template <typename Field, typename Read>
void Optional(Field& field, Field missing, const Read& read) {
  field = missing;
  IgnoreErrors([&] { field = read(); });
}

void SetCreateDate(ReportControl& control, const Recordset& row) {
  const std::string created = TextOf(row, "CreateDate");
  const auto date = text::ParseDate(created.substr(0, created.find_first_of(" T")));
  if (!date) {
    throw Error(created.empty() ? ErrorNumber::kNullUse : ErrorNumber::kTypeMismatch,
                "Report " + std::to_string(control.state.ReportID) +
                    ": CreateDate holds no date: \"" + created + "\"");
  }
  control.datToday.SetValue(*date);
}

// Where each load begins and what a report that isn't there leaves: nothing of the one before, and
// a query without rows.
void ForgetDefinition(ReportState& state) {
  state.SQLQuery = kEmptyQuery;
  state.Title.clear();
  state.ReportNotes.clear();
  state.MakeTreeFlag = state.MakeMergeFlag = state.MakeTransposeFlag = false;
  state.MakeSecure = state.IsStoredProcedure = state.ShowPopupTree = false;
  state.ShowDiagram = state.LockPrintPreview = state.HasProgressBar = false;
  state.ShowFlatternParameters = true;
  state.ReportFormTypeID = state.ReportFontSize = state.ReportRowHeight = -1;
  state.SQLSP.clear();
  state.QueryText = state.roughSQL = state.SQLQuery;
}

void ReadIdentity(ReportControl& control, const Recordset& row) {
  ReportState& state = control.state;
  state.ReportID = row.Field("ID").Number();
  state.ReportNotes = TextOf(row, "Notes");
  state.Title = TextOf(row, "Title");
  SetCreateDate(control, row);
}

void ReadFlags(ReportState& state, const Recordset& row) {
  const FieldValue tree = row.Field("MakeTree");
  state.MakeTreeFlag = !tree.IsNull() && tree.Number() == 1;
  Optional(state.ShowPopupTree, false, [&] { return FlagOf(row, "ShowPopupTree", false); });
  Optional(state.ReportFontSize, -1, [&] { return NumberOf(row, "FontSize"); });
  state.ReportRowHeight = NumberOf(row, "ReportRowHeight");
  state.MakeMergeFlag = FlagOf(row, "MakeMerge", false);
  state.MakeTransposeFlag = FlagOf(row, "MakeTranspose", false);
  const FieldValue form_type = row.Field("FormTypeID");
  state.ReportFormTypeID = form_type.IsNull() ? -1 : form_type.Number();
}

void ReadQuery(ReportState& state, const Recordset& row) {
  state.SQLQuery = TextOf(row, "SQLQuery");
  IgnoreErrors([&] { state.SQLQuery += TextOf(row, "Reserved"); });
  state.QueryText = state.SQLQuery;
  state.ShowDiagram = FlagOf(row, "ShowDiagram", false);
  state.MakeSecure = FlagOf(row, "MakeSecure", false);
}

void ReadOptionalColumns(ReportState& state, const Recordset& row) {
  const auto flag = [&](bool& field, const char* column, bool missing) {
    Optional(field, missing, [&] { return FlagOf(row, column, missing); });
  };
  flag(state.IsStoredProcedure, "IsStoredProcedure", false);
  Optional(state.SQLSP, std::string(), [&] { return TextOf(row, "SQLSP"); });
  flag(state.ShowFlatternParameters, "ShowFlatternParameters", true);
  flag(state.LockPrintPreview, "LockPrintPreview", false);
  flag(state.HasProgressBar, "HasProgressBar", false);
  state.roughSQL = state.IsStoredProcedure ? "EXEC " + state.SQLSP : state.SQLQuery;
}

bool ReadReportRow(ReportControl& control, std::int32_t report_id) {
  ReportState& state = control.state;
  ForgetDefinition(state);
  Recordset& slot = control.world.process.dten().rssqlGeneral1;
  OpenSlot(slot, ReportRowQuery(report_id));
  const bool found = slot.RecordCount() > 0;
  state.Missing = !found;
  if (found) {
    ReadIdentity(control, slot);
    ReadFlags(state, slot);
    ReadQuery(state, slot);
    ReadOptionalColumns(state, slot);
  }
  slot.Close();
  control.SetTitle(control.state.Title);
  return found;
}

bool ShowParameterPanel(ReportControl& control) {
  VorekParameters& panel = control.VorekParameters1;
  panel.SetWidth(control.Width());
  panel.CancelVisible = control.state.CancelVisible;
  return panel.View(control.state.ReportID, control.state.roughSQL, control.Width());
}

void OfferPanel(ReportControl& control) {
  std::string shown = "FALSE";
  if (control.state.ParameterString.empty() && control.state.ShowFlatternParameters) {
    shown = "False";
    IgnoreErrors([&] {
      if (ShowParameterPanel(control)) shown = "True";
    });
  }
  control.VorekParameters1.SetTag("ParametersShowed=" + shown);
}

// The hourglass while it lives: a load that fails must not leave it behind.
class Hourglass {
 public:
  explicit Hourglass(Windows& windows) : windows_(windows) { windows_.SetMousePointer(11); }
  ~Hourglass() { windows_.SetMousePointer(0); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  Windows& windows_;
};

}  // namespace

void LoadReportDefinition(ReportControl& control, std::int32_t report_id) {
  const Hourglass hourglass(control.world.process.windows());
  const bool found = ReadReportRow(control, report_id);
  control.VorekParameters1.SetReportCaption(control.state.Title);
  OfferPanel(control);
  control.LayOut();
  ReportContext report = control.Context();
  if (found) {
    IgnoreErrors([&] { ReadColumnLayout(report); });
  } else {
    ReadColumnLayout(report);
  }
  control.state.ReportDistributed = "توزيع شده";
}

}  // namespace vorek
