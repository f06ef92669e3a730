#ifndef VOREK_MESSAGES_FORM_ERROR_H_
#define VOREK_MESSAGES_FORM_ERROR_H_

#include <string>

#include "widgets/form.h"

namespace vorek {

// A failure of a report: a short text, and the error's own words in a section that unfolds.
class FormError : public Form {
 public:
  explicit FormError(Windows& windows);
  std::string MainText() const override { return lblError.Caption(); }
  std::string DetailText() const override { return txtError.Text(); }
  bool DetailOpen() const { return detail_open_; }

  Label lblError{this, "lblError"};
  TextBox txtError{this, "txtError"};
  Button cmdOk{this, "cmdOk"};
  Button cmdDetail{this, "cmdDetail"};

  static constexpr std::int32_t kDesignHeight = 4800;  // twips, with the detail open

 private:
  void FoldAtLoad();
  void ToggleDetail();
  void CloseOnKey(int key_code, int shift);

  bool detail_open_ = false;
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_FORM_ERROR_H_
