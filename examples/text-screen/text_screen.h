#ifndef TEXT_SCREEN_H_
#define TEXT_SCREEN_H_

#include <vorek/no_windows.h>
#include <vorek/shown_control.h>
#include <vorek/shown_list.h>

#include <iosfwd>
#include <string>

// A screen of lines. It prints what a user would see, and a line that it reads is what a user does:
//   PATH=TEXT   types into a field
//   PATH?TEXT   searches its list
//   PATH#N      takes the row N of those that it shows, from 0
//   PATH-N      lets that row go, in a choice of several
//   PATH!       presses a button
class TextScreen : public vorek::NoWindows {
 public:
  // Both must outlive the screen.
  TextScreen(std::istream& user, std::ostream& shown) : user_(user), shown_(shown) {}

  // A message or a dialog, until it is answered; at the end of the lines it is closed unanswered.
  void ShowModal(vorek::Form& form) override;

  // Prints the controls below the root that its user can do something with, labels too.
  void Print(vorek::Control& root);
  // Reads a line and does what it says. False at the end of the lines.
  bool Take(vorek::Control& root);

 private:
  void PrintControl(vorek::Control& root, const vorek::ShownControl& control);
  void PrintRows(const vorek::ShownList& list);
  static bool Do(vorek::Control& root, const std::string& path, char what, const std::string& text);

  std::istream& user_;
  std::ostream& shown_;
};

#endif  // TEXT_SCREEN_H_
