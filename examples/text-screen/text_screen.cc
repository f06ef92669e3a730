#include "text_screen.h"

#include <vorek/shown_form.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <istream>
#include <optional>
#include <ostream>

namespace {

// What was found in it stays on view; a list that holds nothing yet is opened.
std::optional<vorek::ShownList> ListToShow(vorek::Control& root, const std::string& path) {
  const std::optional<vorek::ShownList> list = vorek::ListOf(root, path);
  return list && list->rows.empty() ? vorek::OpenList(root, path) : list;
}

bool ChooseAt(vorek::Control& root, const std::string& path, int number, bool chosen) {
  const std::optional<vorek::ShownList> list = ListToShow(root, path);
  if (!list || number < 0 || number >= static_cast<int>(list->rows.size())) return false;
  return vorek::ChooseRow(root, path, list->rows[static_cast<std::size_t>(number)], chosen);
}

}  // namespace

void TextScreen::ShowModal(vorek::Form& form) {
  const vorek::ShownForm said = vorek::TextOf(form);
  shown_ << "== " << said.caption << '\n' << said.main << '\n';
  vorek::Control& root = vorek::RootOf(form);
  while (vorek::IsShown(form)) {
    Print(root);
    if (!Take(root)) return vorek::CloseByBox(form);
  }
}

void TextScreen::Print(vorek::Control& root) {
  for (const vorek::ShownControl& control : vorek::ControlsOf(root)) {
    const bool holds_others = control.kind == "Frame" || control.kind == "VorekParameters";
    if (control.visible && control.enabled && !holds_others) PrintControl(root, control);
  }
}

void TextScreen::PrintControl(vorek::Control& root, const vorek::ShownControl& control) {
  const std::string label = vorek::LabelOf(root, control.path);
  shown_ << (label.empty() ? "" : label + " ") << control.path << " (" << control.kind
         << "): " << control.text << '\n';
  if (!control.refusal.empty()) {
    shown_ << "  ! " << control.refused_text << ": " << control.refusal << '\n';
  }
  if (const auto list = ListToShow(root, control.path)) PrintRows(*list);
}

void TextScreen::PrintRows(const vorek::ShownList& list) {
  constexpr std::size_t kMost = 5;
  for (std::size_t i = 0; i < std::min(kMost, list.rows.size()); ++i) {
    const vorek::ShownRow& row = list.rows[i];
    shown_ << "  #" << i << (row.chosen ? " * " : " ") << row.text << '\n';
  }
  const char* const more = list.more ? " and more" : "";
  if (list.rows.size() > kMost) shown_ << "  of " << list.rows.size() << more << '\n';
}

bool TextScreen::Take(vorek::Control& root) {
  std::string line;
  if (!std::getline(user_, line)) return false;
  const std::size_t at = std::min(line.find_first_of("=?#-!"), line.size());
  const std::string text = line.substr(std::min(at + 1, line.size()));
  if (at == line.size() || !Do(root, line.substr(0, at), line[at], text)) {
    shown_ << "nothing happens: " << line << '\n';
  }
  return true;
}

bool TextScreen::Do(vorek::Control& root, const std::string& path, char what,
                    const std::string& text) {
  switch (what) {
    case '=':
      return vorek::TypeInto(root, path, text);
    case '?':
      return vorek::SearchList(root, path, text).has_value();
    case '#':
    case '-':
      return ChooseAt(root, path, std::atoi(text.c_str()), what == '#');
    default:
      return vorek::Press(root, path);
  }
}
