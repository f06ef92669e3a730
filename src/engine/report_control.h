#ifndef VOREK_ENGINE_REPORT_CONTROL_H_
#define VOREK_ENGINE_REPORT_CONTROL_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "drill/general_class.h"
#include "engine/popup_menus.h"
#include "engine/world_state.h"
#include "grid/drawn_widths.h"
#include "grid/grid.h"
#include "grid/report_context.h"
#include "parameters/form_ask_user.h"
#include "parameters/vorek_parameters.h"
#include "state/report_state.h"
#include "totals/form_quick_search.h"
#include "vorek/report.h"
#include "widgets/basic_controls.h"
#include "widgets/vorek_date.h"

namespace vorek {

class FormReport;

// What stands behind a VorekReport1: its controls and its report state. The work is done by passes
// over them (report_load, report_run, report_layout, and those of the lower floors).
class ReportControl : public Frame {
 public:
  explicit ReportControl(WorldState& world, Control* parent = nullptr,
                         std::string name = "VorekReport1");
  ~ReportControl() override;

  std::string_view Kind() const override { return "VorekReport1"; }
  void KeyDown(int key_code, int shift) override;
  void GotFocus() override;

  // See vorek/report.h.
  bool View(std::int32_t id, const std::string& parameter_string, const std::string& caller_value);
  bool Refresh(bool do_filter, const std::string& parameter_string,
               const std::string& caller_value);
  // Runs again when something that the report shows has changed.
  bool ReportRefreshOnChange();
  // Shows the report with all of its records again.
  void TakeFilterAway();
  // An event of a widget that a host placed beside the report: "Changed" runs it again.
  void ObjectEvent(const std::string& name);
  // Throws Error for a text that DataSession::Check refuses; the former one then stays in force.
  void SetConnection(const std::string& text);
  void SetEditable(bool on);
  void SetEnabledGrids(bool on);
  void SetMainTopRow(std::int32_t row);
  std::string CellText(std::int32_t row, std::int32_t col);

  // The widths that the user drew in the report on show, which hold over its later runs.
  const DrawnWidths& MainWidths() const { return main_widths_; }
  const DrawnWidths& TransposeWidths() const { return transpose_widths_; }
  // Those of an earlier time.
  void SetDrawnWidths(DrawnWidths main, DrawnWidths transposed);

  // A host tells the title and the parameters in force above the control (HeadOf): they take no
  // room in it. Call it before the first View.
  void LeaveHeadToHost();
  // Places the children by the control's size.
  void LayOut();
  // The same and leaves the focus where it is.
  void Arrange();
  void FocusGrid();

  // The title, also that of a report on show.
  void SetTitle(const std::string& title);
  // Closes the window that the control stands in; a host's is asked for by an event.
  void CloseParent();
  void ComeToFront();

  // Loads a report for an entry point that shows no panel, as the user of the control: its
  // definition is there, its grids are empty.
  void LoadForEntry(std::int32_t id, const std::string& parameter_string);

  // A window for a related report; those that were closed by now go.
  FormReport& NewWindow();
  void CloseWindows();

  // Opens the prompt dialog of the last run again.
  void mnuShowAskForm_Click();

  ReportContext Context() {
    return {world.process, state, flxMain, flxTranspose, world.messages, Evaluation, &Progress};
  }

  static constexpr std::int32_t kCaptionWidth = 6000;  // twips, of a short title

  WorldState& world;
  ReportState state;
  ReportEvents events;
  GeneralClass general{world.process.clock()};
  EvaluationClass Evaluation;

  Label lblCaption{this, "lblCaption"};
  VorekParameters VorekParameters1{this, "VorekParameters1", world.process, world.messages};
  Frame frameMain{this, "frameMain"};
  Grid flxMain{&frameMain, "flxMain"};
  Grid flxTranspose{&frameMain, "flxTranspose"};
  Button cmdAdd{&frameMain, "cmdAdd"};
  Button cmdEdit{&frameMain, "cmdEdit"};
  Button cmdDelete{&frameMain, "cmdDelete"};
  VorekProgressBar Progress{&frameMain, "Progress"};
  VorekDate datToday{&frameMain, "datToday"};
  VorekDate VorekToday{&frameMain, "VorekToday"};
  HeaderMenu FlexPopupMenu{this, "FlexPopupMenu"};
  LastRowMenu FlexPopupMenu2{this, "FlexPopupMenu2"};
  std::unique_ptr<FormAskUser> aFormAskUser;
  std::unique_ptr<FormQuickSearch> frmQuickSearch;  // made when it is first asked for

  // The panel's and the dialog's Search: takes the finished text and runs it.
  void SearchFromPanel(const std::string& query);
  void SearchFromDialog(const std::string& query);
  // No rows of any report: both grids to 2 rows and 2 columns, flxMain on view.
  void EmptyGrids();
  // Puts the selection back on a remembered row, on the first one if that is gone.
  void RestoreRow(Grid& grid, std::int32_t row);

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  void ConnectEvents();
  void ConnectButtons();
  void BindConnection();
  bool RunReport(bool do_filter, const std::string& parameter_string);
  void TakeUser();
  void BeginReport(std::int32_t id, const std::string& parameter_string,
                   const std::string& caller_value);
  void LoadReport(std::int32_t id);
  void DropReport();
  void EndView();
  void ClearGrids();
  void TakeSearch(const std::string& query, const VorekParameters& form);

  void ApplyWidths();

  DrawnWidths main_widths_;
  DrawnWidths transpose_widths_;
  std::int32_t drawn_report_ = -1;                    // that the widths were drawn in
  std::vector<std::unique_ptr<FormReport>> windows_;  // of related reports, in their opening order
};

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_CONTROL_H_
