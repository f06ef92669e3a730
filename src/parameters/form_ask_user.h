#ifndef VOREK_PARAMETERS_FORM_ASK_USER_H_
#define VOREK_PARAMETERS_FORM_ASK_USER_H_

#include <cstdint>
#include <functional>
#include <string>

#include "parameters/vorek_parameters.h"
#include "widgets/form.h"

namespace vorek {

// The dialog that asks for a report's parameters. It stays, hidden, after an answer: its owner may
// show it again and drops it.
class FormAskUser : public Form {
 public:
  FormAskUser(Process& process, Notices& notices);

  // The user's close only hides; the answer stays what it was.
  void CloseBox() override { Hide(); }

  std::string Title;
  std::int32_t PeriodID = -1;
  // Those of the control at the last confirmation, trimmed.
  std::string ListOfVisualParameters;
  std::string ListOfParameters;
  VorekParameters VorekParameters1;

  // Modal. True if the user confirmed; on_search has been raised then. Throws what the database
  // throws.
  bool View(std::int32_t ReportID, std::string& roughSQL);

  std::function<void(const std::string& roughSQL)> on_search;
  std::function<void()> on_clear;

 private:
  void ConnectEvents();
  void Search(const std::string& roughSQL);
  // The least width for the labels of the report.
  std::int32_t FormWidth(std::int32_t report_id);

  Process& process_;
  bool confirmed_ = false;
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_FORM_ASK_USER_H_
