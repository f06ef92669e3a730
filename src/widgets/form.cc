#include "widgets/form.h"

#include <utility>

namespace vorek {

Form::Form(Windows& windows, std::string name)
    : CaptionControl(nullptr, std::move(name)), windows_(windows) {
  SetVisible(false);
}

void Form::FormKeyDown(int key_code, int shift) {
  if (on_form_key_down) on_form_key_down(key_code, shift);
  if (shown_ && ActiveControl() != nullptr) ActiveControl()->KeyDown(key_code, shift);
}

void Form::Activate() {
  if (on_activate) on_activate();
}

// One that fails has loaded nothing: the next one begins anew.
void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  try {
    if (on_load) on_load();
  } catch (...) {
    loaded_ = false;
    throw;
  }
}

void Form::ShowModal() {
  Load();
  modal_ = shown_ = true;
  SetVisible(true);
  windows_.ShowModal(*this);
  Hide();
}

void Form::Show() {
  Load();
  modal_ = false;
  shown_ = true;
  SetVisible(true);
  windows_.Show(*this);
}

void Form::Hide() {
  shown_ = false;
  SetVisible(false);
}

void Form::Unload() {
  Hide();
  if (!std::exchange(loaded_, false)) return;
  if (on_unload) on_unload();
}

void Menu::Click() {
  if (Enabled() && Visible()) Control::Click();
}

}  // namespace vorek
