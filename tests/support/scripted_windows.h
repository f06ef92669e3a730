#ifndef VOREK_TESTS_SUPPORT_SCRIPTED_WINDOWS_H_
#define VOREK_TESTS_SUPPORT_SCRIPTED_WINDOWS_H_

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "vorek/no_windows.h"
#include "widgets/form.h"

namespace vorek {

// A screen whose user does what a test told before; without an answer the form is closed by its
// close box. Keeps what each form said.
class ScriptedWindows : public NoWindows {
 public:
  using Answer = std::function<void(Form&)>;
  void Queue(Answer answer) { answers_.push_back(std::move(answer)); }

  void ShowModal(Form& form) override {
    shown.push_back(form.Name() + "|" + form.Caption() + "|" + form.MainText());
    if (!answers_.empty()) {
      const Answer answer = answers_.front();
      answers_.pop_front();
      answer(form);
    }
    if (form.Shown()) form.CloseBox();
  }
  void SetMousePointer(int shape) override { pointer = shape; }
  void Beep(std::int32_t frequency, std::int32_t duration) override {
    beeps.push_back(std::to_string(frequency) + " " + std::to_string(duration));
  }
  ScreenPoint ClientToScreen(const Control&) const override { return corner; }
  void LoadKeyboardLayout(std::string_view name) override { layouts.emplace_back(name); }
  void PopupMenu(Menu& menu) override { menus.push_back(menu.Name()); }
  int OsMajorVersion() const override { return os_version; }
  bool PassGoesOn() override { return !on_question || on_question(); }
  bool TellCancelled(std::string_view line) override {
    cancelled.emplace_back(line);
    return false;
  }

  std::function<bool()> on_question;   // whether a pass goes on
  std::vector<std::string> cancelled;  // what was told of cancelled passes
  std::vector<std::string> shown;
  std::vector<std::string> beeps;
  std::vector<std::string> layouts;
  std::vector<std::string> menus;
  ScreenPoint corner;
  int os_version = 0;
  int pointer = 0;

 private:
  std::deque<Answer> answers_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_SCRIPTED_WINDOWS_H_
