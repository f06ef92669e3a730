#include "text_screen.h"

#include <vorek/shown_form.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <vector>

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
  constexpr std::size_t kMost = 5;
  shown_ << control.path << " (" << control.kind << "): " << control.text << '\n';
  if (!control.refusal.empty()) {
    shown_ << "  ! " << control.refused_text << ": " << control.refusal << '\n';
  }
  const std::vector<std::string> entries = vorek::EntriesOf(root, control.path);
  for (std::size_t i = 0; i < std::min(kMost, entries.size()); ++i) {
    shown_ << "  #" << i << ' ' << entries[i] << '\n';
  }
  if (entries.size() > kMost) shown_ << "  of " << entries.size() << '\n';
}

bool TextScreen::Take(vorek::Control& root) {
  std::string line;
  if (!std::getline(user_, line)) return false;
  const std::size_t at = std::min(line.find_first_of("=#!"), line.size());
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
    case '#':
      return vorek::ChooseEntry(root, path, static_cast<std::int32_t>(std::atoi(text.c_str())));
    default:
      return vorek::Press(root, path);
  }
}
