#ifndef VOREK_ENGINE_REPORT_RUN_H_
#define VOREK_ENGINE_REPORT_RUN_H_

#include <string>
#include <vector>

#include "engine/report_control.h"
#include "grid/column_layout_pass.h"

namespace vorek {

// One run of the loaded report: from its text to a filled and coloured grid. Made for each Refresh.
//
// A failure from the opening of the query to the end of the colouring is told to the user; one
// before or after it isn't. Either way both grids are emptied, the slots closed, and the definition
// stays, so that the report can run again.
class ReportRun {
 public:
  explicit ReportRun(ReportControl& control)
      : control_(control),
        state_(control.state),
        process_(control.world.process),
        report_(control.Context()) {}

  // True if the report was shown, or waits for its panel.
  bool Run(bool do_filter, const std::string& parameter_string);

 private:
  enum class Decision { kRun, kWait, kStop };

  // Deciding the text.
  Decision DecideText(bool do_filter, const std::string& parameter_string);
  Decision Substitute(const std::string& parameter_string);
  Decision AskPanel();
  Decision AskDialog();
  void PutTokens();

  // Running the query and filling the grid.
  bool RunText(const std::string& parameter_string);
  void Fill(const std::string& parameter_string);
  void OpenQuery(const std::string& parameter_string);
  void FollowUpProcedure();
  void TakeFilter();
  void DropTreeFilter();
  void ShowTableOfProcedure(const std::string& name);
  void FindKeyFields();
  void FilterTreeLevel();
  void BindGrid();
  void ShowHeadersOnly();
  void FillCells();
  void NumberRows();
  void Advance();

  // What follows a filled grid.
  void Present();
  void MakeStoredTotals();
  void FocusResult();

  void Fail(const Error& error);
  void SilentExit(long error_number);
  void CloseSlots();

  Recordset& Query() { return process_.dten().rssqlQuery; }

  ReportControl& control_;
  ReportState& state_;
  Process& process_;
  ReportContext report_;
  bool ignore_errors_ = false;  // the dialog's answer is followed by statements that may fail
};

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_RUN_H_
