#ifndef VOREK_WIDGETS_FORM_H_
#define VOREK_WIDGETS_FORM_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "vorek/windows.h"
#include "widgets/basic_controls.h"

namespace vorek {

// A window. It is shown through the Windows port, modally or not.
class Form : public CaptionControl {
 public:
  Form(Windows& windows, std::string name);

  std::string_view Kind() const override { return "Form"; }

  // --- Events from the presenter -------------------------------------------------------------

  // The close box, or Alt+F4: asks nobody and unloads, unless a form has its own way.
  virtual void CloseBox() { Unload(); }
  // A key down anywhere in the form, before the active control sees it (on_form_key_down).
  void FormKeyDown(int key_code, int shift);

  // The form's window became the active one.
  void Activate();

  // --- State for the presenter ---------------------------------------------------------------

  bool Shown() const { return shown_; }
  bool Loaded() const { return loaded_; }
  bool Modal() const { return modal_; }
  // A bare form has no frame and stands at its Left and Top on the screen; any other one stands in
  // the middle of the window before which it shows.
  bool Bare() const { return bare_; }
  // What the form is about in one text: its message, for a person who reads a log.
  virtual std::string MainText() const { return {}; }
  // What stands behind it, such as an error's own words.
  virtual std::string DetailText() const { return {}; }

  // --- Changes by the program ------------------------------------------------------------------

  void SetBare(bool on) { bare_ = on; }  // before it is shown
  // Begins with a fresh form (on_load) if it isn't loaded; showing does the same.
  void Load();
  // Returns when the form is hidden or unloaded.
  void ShowModal();
  void Show();
  void Hide();
  // Hides the form; the next Show begins with a fresh one (on_load).
  void Unload();

  // --- Callbacks to the owner ------------------------------------------------------------------

  std::function<void()> on_load;
  std::function<void()> on_unload;
  std::function<void()> on_activate;
  std::function<void(int key_code, int shift)> on_form_key_down;

 private:
  Windows& windows_;
  bool loaded_ = false;
  bool shown_ = false;
  bool modal_ = false;
  bool bare_ = false;
};

// An entry of a menu, with a submenu if it has children.
class Menu : public CaptionControl {
 public:
  using CaptionControl::CaptionControl;
  std::string_view Kind() const override { return "Menu"; }
  // Nothing while the entry is disabled or hidden.
  void Click() override;
};

// A control array: members are made at run time and owned here. Member 0 is the template.
template <typename C>
class ControlArray {
 public:
  ControlArray(Control& parent, std::string name) : parent_(parent), name_(std::move(name)) {}

  // Makes the next member and returns it.
  C& Load() {
    members_.push_back(std::make_unique<C>(&parent_, name_, static_cast<int>(members_.size())));
    return *members_.back();
  }
  // Removes the members from `first` on.
  void Unload(std::size_t first) {
    while (members_.size() > first) members_.pop_back();
  }
  std::size_t Size() const { return members_.size(); }
  C& operator[](std::size_t index) { return *members_.at(index); }
  const std::string& Name() const { return name_; }

 private:
  Control& parent_;
  std::string name_;
  std::vector<std::unique_ptr<C>> members_;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_FORM_H_
