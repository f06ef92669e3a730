#ifndef VOREK_ENGINE_FORM_REPORT_H_
#define VOREK_ENGINE_FORM_REPORT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "engine/report_control.h"
#include "widgets/form.h"

namespace vorek {

// The window of a related report: a report control of its own, in a world of its own, with the way
// that led to it above. It holds no result any more once it is unloaded.
class FormReport : public Form {
 public:
  // The caller must outlive it.
  explicit FormReport(ReportControl& caller);

  // Shows the report, modally if system parameter 123 says so; a report that the user has no right
  // to, or that can't be loaded, has no window. Throws what ReportControl::View throws.
  void ViewSystemReport(std::int32_t ID, const std::string& inParameterString);

  // Given by the caller, for the control.
  std::int32_t ParentID = 0;
  std::int32_t CallerID = 0;
  std::int32_t UserID = -1;
  std::int32_t EmployeeID = -1;
  std::int32_t PositionID = -1;
  std::string OleConnectionString;

  // Recorded from the control's event, which hides the window: the caller raises it.
  std::int32_t FormTypeID = -1;
  std::string UniqueWC;
  std::string InvokedValueStr;
  bool InvokeClearShowRecorded = false;
  bool InvokeViewRecorded = false;

 private:
  ReportControl& caller_;
  WorldState world_;

 public:
  ReportControl VorekReport11{world_, this, "VorekReport11"};
  Button cmdContinue{this, "cmdContinue"};
  Timer tmrSetFocus{this, "tmrSetFocus"};
  // The reports from the first one to the caller; pressing one leads back to it.
  ControlArray<Button> cmdWay{*this, "cmdWay"};

 private:
  void ConnectEvents();
  void TakeScreen();
  void Resized();
  void FocusReport();
  void End();
  std::vector<ReportControl*> Way() const;
  void MakeWay();
  void PlaceWay();
  void GoBackTo(ReportControl& report);

  std::int32_t old_width_ = 0;
  std::int32_t old_height_ = 0;
};

}  // namespace vorek

#endif  // VOREK_ENGINE_FORM_REPORT_H_
