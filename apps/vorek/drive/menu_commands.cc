#include <functional>

#include "drive/commands.h"
#include "text/utf8.h"
#include "vorek/shown_control.h"
#include "widgets/form.h"

namespace vorek::drive {
namespace {

using Entries = std::vector<ShownEntry>;

// At any depth.
const ShownEntry* FindEntry(const Entries& entries,
                            const std::function<bool(const ShownEntry&)>& wanted) {
  for (const ShownEntry& entry : entries) {
    if (wanted(entry)) return &entry;
    if (const ShownEntry* const below = FindEntry(entry.entries, wanted)) return below;
  }
  return nullptr;
}

// By its name, or else by its caption.
const ShownEntry& EntryOf(const Entries& entries, const std::string& word) {
  const ShownEntry* found = FindEntry(
      entries, [&](const ShownEntry& entry) { return text::EqualsIgnoreCase(entry.name, word); });
  if (found == nullptr) {
    found = FindEntry(entries, [&](const ShownEntry& entry) { return entry.caption == word; });
  }
  if (found == nullptr) Refuse("the menu has no entry " + word);
  return *found;
}

void ChooseMenu(Session& session, const Words& words) {
  Menu* const menu = session.stage->OpenMenu();
  if (menu == nullptr) Refuse("no menu is open");
  const Entries entries = EntriesOf(*menu);
  const ShownEntry& chosen = EntryOf(entries, Word(words, 1));
  session.stage->CloseMenu();
  // Where only the submenu is disabled there is nothing to tell of the entry itself.
  if (ChooseEntry(*menu, chosen.name) || chosen.enabled) return;
  session.Print("disabled " + chosen.name + " " + Quote(chosen.why_not));
}

}  // namespace

Commands MenuCommands() { return {{"menu", ChooseMenu}}; }

}  // namespace vorek::drive
