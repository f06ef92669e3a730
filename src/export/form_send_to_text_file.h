#ifndef VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_
#define VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_

#include <string>

#include "export/file_form.h"

namespace vorek {

// Asks for the file, the delimiter and the options of a text file.
class FormSendToTextFile : public FileForm {
 public:
  FormSendToTextFile(Process& process, Notices& notices);

  // Modal. True if the user accepted; the values are then those of the dialog.
  bool getTextFileName(std::string& fileName, std::string& delimiter, bool& newLine, bool& header,
                       bool& removeMoney);

  Label lblDelimiter{this, "lblDelimiter"};
  TextBox txtDelimiter{this, "txtDelimiter"};
  CheckBox chkNewLine{this, "chkNewLine"};
  CheckBox chkHeader{this, "chkHeader"};
  CheckBox chkRemoveMoney{this, "chkRemoveMoney"};

 private:
  void Place();
  void Reset();
  void cmdSave_Click();
  void cmdOk_Click();
  bool IsThere(const std::string& file_name) const;

  std::string chosen_;  // last in the save dialog
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FORM_SEND_TO_TEXT_FILE_H_
