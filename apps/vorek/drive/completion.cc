#include "drive/completion.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "drive/commands.h"
#include "drive/targets.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/shown_control.h"

namespace vorek::drive {
namespace {

using WordSet = std::set<std::string>;

WordSet CommandNames() {
  WordSet words = {"when"};
  for (const auto& [name, command] : AllCommands()) words.emplace(name);
  return words;
}

// As "menu" finds them, at any depth.
void AddEntries(const std::vector<ShownEntry>& entries, WordSet& words) {
  for (const ShownEntry& entry : entries) {
    words.insert(entry.name);
    AddEntries(entry.entries, words);
  }
}

WordSet EntryNames(const Menu& menu) {
  WordSet words;
  AddEntries(EntriesOf(menu), words);
  return words;
}

void AddPaths(const Control& control, WordSet& words) {
  for (const Control* const child : control.Children()) {
    words.insert(child->Path());
    AddPaths(*child, words);
  }
}

// Paths below the report, and the properties of what is written up to the last dot.
WordSet PathsAndProperties(Session& session, const std::string& word) {
  const Control& root = session.Report().Root();
  WordSet words = {root.Name()};
  AddPaths(root, words);
  const std::size_t dot = word.rfind('.');
  const std::string path = dot == std::string::npos ? "" : word.substr(0, dot);
  IgnoreErrors([&] {
    for (const std::string_view name : FindControl(session, path).PropertyNames()) {
      words.insert(path + "." + std::string(name));
    }
  });
  return words;
}

WordSet WordsBehind(Session& session, const std::string& head, const std::string& word) {
  if (text::TrimView(head).empty()) return CommandNames();
  const Menu* const menu = session.stage->OpenMenu();
  if (head.starts_with("menu") && menu != nullptr) return EntryNames(*menu);
  return PathsAndProperties(session, word);
}

}  // namespace

std::vector<std::string> Completions(Session& session, const std::string& head,
                                     const std::string& word) {
  const WordSet words = WordsBehind(session, head, word);
  std::vector<std::string> matching;
  std::copy_if(
      words.begin(), words.end(), std::back_inserter(matching),
      [&](const std::string& candidate) { return text::StartsWithIgnoreCase(candidate, word); });
  return matching;
}

}  // namespace vorek::drive
