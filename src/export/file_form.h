#ifndef VOREK_EXPORT_FILE_FORM_H_
#define VOREK_EXPORT_FILE_FORM_H_

#include <cstdint>
#include <string>
#include <vector>

#include "state/notices.h"
#include "state/process.h"
#include "widgets/form.h"

namespace vorek {

// A dialog around the choice of a file: what it is for above, the file with its button, and below
// the buttons that accept and cancel.
class FileForm : public Form {
 public:
  void CloseBox() override { Close(false); }

  Label lblHelp{this, "lblHelp"};
  TextBox txtSaveFileName{this, "txtSaveFileName"};
  Button cmdSave{this, "cmdSave"};
  Button cmdOk{this, "cmdOk"};
  Button cmdCancel{this, "cmdCancel"};

 protected:
  FileForm(Process& process, Notices& notices, std::string name, const std::string& caption,
           const std::string& help);

  // Gives the form its size and its own controls their places, the file's line at that height.
  // Measures are twips.
  void PlaceFrame(std::int32_t width, std::int32_t height, std::int32_t file_top);
  // The controls as the Tab key goes through them; all but these texts run from the right.
  void SetOrder(const std::vector<Control*>& controls, const std::vector<Control*>& from_left);

  // Modal. True if the user accepted.
  bool IsAccepted();
  void Close(bool accepted);

  Process& process_;
  Notices& notices_;

 private:
  bool accepted_ = false;
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FILE_FORM_H_
