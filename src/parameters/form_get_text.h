#ifndef VOREK_PARAMETERS_FORM_GET_TEXT_H_
#define VOREK_PARAMETERS_FORM_GET_TEXT_H_

#include <cstdint>
#include <string>

#include "state/notices.h"
#include "state/process.h"
#include "widgets/basic_controls.h"
#include "widgets/form.h"

namespace vorek {

// Asks for the name under which the values of a parameter form are saved: one of those that the
// report has already, or a new one. Names that aren't wanted any more are deleted here.
class FormGetText : public Form {
 public:
  FormGetText(Process& process, Notices& notices);

  // Modal. True if a name was accepted; `result` is then the name without blanks around it.
  // `changed` tells whether the report's settings are other ones now. Throws what the database
  // throws when the names are read.
  bool getText(std::string& result, std::int32_t reportID, bool& changed);

  Label lblName{this, "lblName"};
  ComboBox cmb{this, "cmb"};
  Button cmdOk{this, "cmdOk"};
  Button cmdDelete{this, "cmdDelete"};
  Button cmdCancel{this, "cmdCancel"};

 private:
  void Place();
  void FillNames();
  void Accept();
  void Delete();
  void End(bool accepted);
  std::string Name() const;

  Process& process_;
  Notices& notices_;
  std::int32_t report_id_ = -1;
  bool accepted_ = false;
  bool changed_ = false;
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_FORM_GET_TEXT_H_
