#include "engine/drill_events.h"

#include "engine/entry_points.h"

namespace vorek {

bool DrillEvents::RaiseDblClick() {
  bool cancel = false;
  if (control_.events.DblClick) control_.events.DblClick(cancel);
  return cancel;
}

void DrillEvents::RaiseViewCelChange() {
  if (control_.events.ViewCelChange) control_.events.ViewCelChange();
}

void DrillEvents::RaiseInvokeView(std::int32_t form_type, std::string condition,
                                  std::string value) {
  if (control_.events.InvokeView) control_.events.InvokeView(form_type, condition, value);
}

void DrillEvents::RaiseInvokeClearShow(std::int32_t form_type, std::string value) {
  if (control_.events.InvokeClearShow) control_.events.InvokeClearShow(form_type, value);
}

void DrillEvents::OpenReport(std::int32_t called, std::string parameters, std::string title) {
  ViewReportWithoutParameters(control_, called, parameters, title);
}

void DrillEvents::RunAgain() { control_.Refresh(false, "", ""); }

}  // namespace vorek
