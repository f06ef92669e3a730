#ifndef VOREK_DRILL_DRILL_HOST_H_
#define VOREK_DRILL_DRILL_HOST_H_

#include <cstdint>
#include <string>

namespace vorek {

// What a way out of a row needs of the control: its events, a run, the window of another report.
class DrillHost {
 public:
  virtual ~DrillHost() = default;

  // True if the host has cancelled the double click.
  virtual bool RaiseDblClick() = 0;
  virtual void RaiseViewCelChange() = 0;
  virtual void RaiseInvokeView(std::int32_t form_type, std::string condition,
                               std::string value) = 0;
  virtual void RaiseInvokeClearShow(std::int32_t form_type, std::string value) = 0;
  // ViewReportWithoutParameters: returns when a modal window is closed, at once for another one.
  virtual void OpenReport(std::int32_t called, std::string parameters, std::string title) = 0;
  // Runs the report again, without a parameter string.
  virtual void RunAgain() = 0;
};

}  // namespace vorek

#endif  // VOREK_DRILL_DRILL_HOST_H_
