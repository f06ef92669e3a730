#ifndef VOREK_ENGINE_DRILL_EVENTS_H_
#define VOREK_ENGINE_DRILL_EVENTS_H_

#include <string>

#include "drill/drill_host.h"
#include "engine/report_control.h"

namespace vorek {

// What the ways out of a row ask of a control.
class DrillEvents : public DrillHost {
 public:
  explicit DrillEvents(ReportControl& control) : control_(control) {}

  bool RaiseDblClick() override;
  void RaiseViewCelChange() override;
  void RaiseInvokeView(std::int32_t form_type, std::string condition, std::string value) override;
  void RaiseInvokeClearShow(std::int32_t form_type, std::string value) override;
  void OpenReport(std::int32_t called, std::string parameters, std::string title) override;
  void RunAgain() override;

 private:
  ReportControl& control_;
};

}  // namespace vorek

#endif  // VOREK_ENGINE_DRILL_EVENTS_H_
