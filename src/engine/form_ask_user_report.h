#ifndef VOREK_ENGINE_FORM_ASK_USER_REPORT_H_
#define VOREK_ENGINE_FORM_ASK_USER_REPORT_H_

#include <cstdint>

#include "engine/report_control.h"
#include "widgets/form.h"

namespace vorek {

// A window with a whole report in it, to search and look something up: a double click ends it.
class FormAskUserReport : public Form {
 public:
  // The world must outlive it.
  explicit FormAskUserReport(WorldState& world);

  // Shows the report modally, as the user that the world knows. Always false, as its interface has
  // it. Throws what ReportControl::View throws.
  bool ShowSearch(std::int32_t& ID);

  ReportControl VorekReport11;

 private:
  void TakeGlobals();
  void SizeReport();

  WorldState& world_;
};

}  // namespace vorek

#endif  // VOREK_ENGINE_FORM_ASK_USER_REPORT_H_
