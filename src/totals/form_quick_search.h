#ifndef VOREK_TOTALS_FORM_QUICK_SEARCH_H_
#define VOREK_TOTALS_FORM_QUICK_SEARCH_H_

#include <cstdint>
#include <string>

#include "state/process.h"
#include "widgets/basic_controls.h"
#include "widgets/form.h"

namespace vorek {

// A line over a column of a grid that takes the text to look for. It is hidden after an answer, so
// that its text stays for the key that searches on.
class FormQuickSearch : public Form {
 public:
  explicit FormQuickSearch(Process& process);

  void CloseBox() override { End(-1); }

  // Modal, with its left upper corner at a place on the screen in twips. True if the user accepted
  // the text.
  bool Ask(std::int32_t left, std::int32_t top);

  std::int32_t SearchResult = -1;  // 1 accepted, -1 dismissed

  TextBox txtDesc{this, "txtDesc"};

 private:
  void NameKeyboardLayout();
  void End(std::int32_t result);

  Process& process_;
};

}  // namespace vorek

#endif  // VOREK_TOTALS_FORM_QUICK_SEARCH_H_
