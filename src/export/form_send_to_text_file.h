#ifndef VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_
#define VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_

#include <string>

#include "state/notices.h"
#include "state/process.h"
#include "widgets/form.h"

namespace vorek {

// Asks for the file, the delimiter and the options of a text file.
class FormSendToTextFile : public Form {
 public:
  FormSendToTextFile(Process& process, Notices& notices);

  void CloseBox() override { Close(false); }

  // Modal. True if the user accepted; the values are then those of the dialog.
  bool getTextFileName(std::string& fileName, std::string& delimiter, bool& newLine, bool& header,
                       bool& removeMoney);

  Label lblHelp{this, "lblHelp"};
  Label lblDelimiter{this, "lblDelimiter"};
  TextBox txtDelimiter{this, "txtDelimiter"};
  CheckBox chkNewLine{this, "chkNewLine"};
  CheckBox chkHeader{this, "chkHeader"};
  CheckBox chkRemoveMoney{this, "chkRemoveMoney"};
  TextBox txtSaveFileName{this, "txtSaveFileName"};
  Button cmdSave{this, "cmdSave"};
  Button cmdOk{this, "cmdOk"};
  Button cmdCancel{this, "cmdCancel"};

 private:
  void Place();
  void Reset();
  void cmdSave_Click();
  void cmdOk_Click();
  void Close(bool accepted);
  bool IsThere(const std::string& file_name) const;

  Process& process_;
  Notices& notices_;
  std::string chosen_;  // last in the save dialog
  bool accepted_ = false;
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_
