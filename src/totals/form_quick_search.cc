#include "totals/form_quick_search.h"

namespace vorek {
namespace {

constexpr int kEnter = 13;
constexpr int kSecondEnter = 138;
constexpr int kEscape = 27;
constexpr std::int32_t kWidth = 2400;
constexpr std::int32_t kHeight = 360;

}  // namespace

FormQuickSearch::FormQuickSearch(Process& process)
    : Form(process.windows(), "frmQuickSearch"), process_(process) {
  SetCaption("جستجوي سريع");
  SetBare(true);
  SetRightToLeft(true);
  txtDesc.SetRightToLeft(true);
  Move(0, 0, kWidth, kHeight);
  txtDesc.Move(0, 0, kWidth, kHeight);
  on_load = [this] { NameKeyboardLayout(); };
  txtDesc.on_got_focus = [this] {
    txtDesc.SelectAll();
    const std::string& layout = process_.main.KeyboardLayoutName;
    if (!layout.empty()) process_.windows().LoadKeyboardLayout(layout);
  };
  on_form_key_down = [this](int key_code, int) {
    if (key_code == kEscape) End(-1);
  };
  txtDesc.on_key_down = [this](int key_code, int) {
    if (key_code == kEnter || key_code == kSecondEnter) End(1);
  };
}

void FormQuickSearch::NameKeyboardLayout() {
  const int version = process_.windows().OsMajorVersion();
  if (version == 4) process_.main.KeyboardLayoutName = "00000401";
  if (version > 4) process_.main.KeyboardLayoutName = "00000429";
}

bool FormQuickSearch::Ask(std::int32_t left, std::int32_t top) {
  Move(left, top, kWidth, kHeight);
  SearchResult = -1;
  txtDesc.SetText("");
  txtDesc.SetFocus();
  ShowModal();
  return SearchResult == 1;
}

void FormQuickSearch::End(std::int32_t result) {
  SearchResult = result;
  Hide();
}

}  // namespace vorek
