#ifndef VOREK_PARAMETERS_VOREK_PARAMETERS_H_
#define VOREK_PARAMETERS_VOREK_PARAMETERS_H_

#include <cstdint>
#include <functional>
#include <string>

#include "state/notices.h"
#include "state/process.h"
#include "widgets/form.h"

namespace vorek {

// The parameter panel. By now it has nothing to ask.
class VorekParameters : public Frame {
 public:
  VorekParameters(Control* parent, std::string name, Process& process, Notices& notices);

  std::string_view Kind() const override { return "VorekParameters"; }

  // The public fields.
  std::string ListOfVisualParameters;
  std::string ListOfParameters;
  bool userChoice = false;
  bool result = false;
  bool CancelVisible = false;
  std::int32_t GivenValue = 0;
  bool CallByReport = false;
  std::int32_t PeriodID = -1;

  // Builds the form. True if the query has parameters and the form stands.
  bool View(std::int32_t inReportID, std::string& roughSQL, std::int32_t new_width);
  void SetReportCaption(const std::string& caption);
  void FillInitially() {}
  bool SetSharedFilters() { return false; }

  std::function<void(const std::string& roughSQL)> on_search;
  std::function<void()> on_clear;
  std::function<void()> on_cancel;

  Label lblCaption{this, "lblCaption"};

 private:
  Process& process_;
  Notices& notices_;
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_VOREK_PARAMETERS_H_
