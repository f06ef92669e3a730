#ifndef VOREK_PARAMETERS_FORM_ASK_USER_H_
#define VOREK_PARAMETERS_FORM_ASK_USER_H_

#include <cstdint>
#include <functional>
#include <string>

#include "parameters/vorek_parameters.h"
#include "widgets/form.h"

namespace vorek {

// The dialog that asks for a report's parameters. By now it has nothing to ask.
class FormAskUser : public Form {
 public:
  FormAskUser(Process& process, Notices& notices)
      : Form(process.windows(), "FormAskUser"),
        VorekParameters1(this, "VorekParameters1", process, notices) {}

  std::string Title;
  std::int32_t PeriodID = -1;
  VorekParameters VorekParameters1;

  // Modal. True if the user confirmed.
  bool View(std::int32_t /*report_id*/, std::string& /*roughSQL*/) { return false; }

  std::function<void(const std::string& roughSQL)> on_search;
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_FORM_ASK_USER_H_
