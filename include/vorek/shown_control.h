#ifndef VOREK_SHOWN_CONTROL_H_
#define VOREK_SHOWN_CONTROL_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The parts of a form and the entries of a menu, for a screen of a host's own: what to show of
// them, and what its user does with them. Nothing here changes what a user couldn't change.
namespace vorek {

class Control;
class Form;
class Menu;

struct ShownControl {
  std::string path;       // by which the calls below take it: "VorekParameters1.txt(1)"
  std::string container;  // the path of what it stands in; "" for the root
  std::string kind;       // "Label", "TextBox", "VorekDate"
  std::string text;       // its caption, text or value; of a check box its caption
  // Of a field whose text isn't taken: why, in Persian, and the text. The value is the one before.
  std::string refusal;
  std::string refused_text;
  // Twips from the left and top of its container.
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  // With all that it stands in.
  bool visible = true;
  bool enabled = true;
  bool checked = false;  // a check box
};

// What the calls below look into: a form, or a report with its panel (VorekReport1::Root).
Control& RootOf(Form& form);

// All controls below the root, each in front of those that stand in it; hidden ones too.
std::vector<ShownControl> ControlsOf(Control& root);

// What the label of a field says, the one that is tied to it or else the nearest one beside or
// above it; without a label the caption of what it stands in. Empty for a control that has a
// caption itself, such as a button or a check box.
std::string LabelOf(Control& root, std::string_view path);

// The lines of a list or a combo box, in their order. Of a list of many rows those that it holds:
// the first ones, or behind a text that fits several rows these. Empty for other controls.
// shown_list.h tells more of them, searches them, and chooses several.
std::vector<std::string> EntriesOf(Control& root, std::string_view path);

// What a user does with a control. False, and nothing happens, if there is no such control, if it
// or what it stands in is disabled or hidden, or if its kind takes no such thing.
//
// A text in place of the old one; the field is left behind it. A text that the field doesn't take
// is true as well: the control's refusal says why. False for a field that is locked, and for one
// whose choice the program has fixed.
bool TypeInto(Control& root, std::string_view path, const std::string& text);
// The entry of that number from 0, of those that EntriesOf gave last. In a choice of several it is
// turned over: chosen or not.
bool ChooseEntry(Control& root, std::string_view path, std::int32_t entry);
// A click: on a button with all that it leads to, such as the run of a report.
bool Press(Control& root, std::string_view path);
// A click that turns a check box over, if it isn't as wanted.
bool Tick(Control& root, std::string_view path, bool checked);
// A key, which the root sees before the control; of a form only while it is shown: the numbers of
// the virtual keys (13 Enter, 27 Escape); shift is a sum of 1 Shift, 2 Ctrl, 4 Alt. The path "" is
// the root alone, in a form with the control that is active.
bool PressKey(Control& root, std::string_view path, std::int32_t key, std::int32_t shift = 0);

struct ShownEntry {
  std::string name;     // "mnuSum", "mnuConfig(1)"
  std::string caption;  // "-" for a line between entries
  std::string why_not;  // of a disabled one, in Persian, where there is a reason
  bool enabled = true;
  std::vector<ShownEntry> entries;  // of a submenu
};
// The visible entries of a pop-up menu.
std::vector<ShownEntry> EntriesOf(const Menu& menu);

// Chooses an entry at any depth by its name. False, and nothing happens, for one that isn't there
// or is disabled or hidden, or whose submenu is.
bool ChooseEntry(Menu& menu, std::string_view name);

}  // namespace vorek

#endif  // VOREK_SHOWN_CONTROL_H_
