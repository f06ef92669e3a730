#include "vorek/shown_control.h"

#include "widgets/choice_text.h"
#include "widgets/field_name.h"
#include "widgets/form.h"
#include "widgets/list_control.h"
#include "widgets/reachable.h"

namespace vorek {
namespace {

// The first of these that a kind has is what it shows.
constexpr const char* kTexts[] = {"Text",        "FarsiDate", "GetTimeFormatted",
                                  "GetDuration", "Caption",   "Value"};

std::string TextOf(Control& control) {
  const auto* const list = dynamic_cast<const ListControl*>(&control);
  if (list != nullptr) return ChoiceText(*list);
  for (const char* const property : kTexts) {
    if (control.Has(property)) return control.Get(property);
  }
  return {};
}

ShownControl Picture(Control& control) {
  ShownControl shown;
  shown.path = FullPath(control);
  shown.container = FullPath(*control.Parent());
  shown.kind = control.Kind();
  shown.text = TextOf(control);
  if (const auto* const typed = dynamic_cast<const TypedControl*>(&control)) {
    shown.refusal = typed->Refusal();
    shown.refused_text = typed->RefusedText();
  }
  shown.left = control.Left();
  shown.top = control.Top();
  shown.width = control.Width();
  shown.height = control.Height();
  shown.visible = IsSeen(control);
  shown.enabled = IsOpen(control);
  const auto* const box = dynamic_cast<const CheckBox*>(&control);
  shown.checked = box != nullptr && box->Value() != 0;
  return shown;
}

void AddBelow(const Control& control, std::vector<ShownControl>& all) {
  for (Control* const child : control.Children()) {
    if (dynamic_cast<const Menu*>(child) != nullptr) continue;
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): no child is null
    all.push_back(Picture(*child));
    AddBelow(*child, all);
  }
}

template <typename List>
bool ChooseFrom(List& list, std::int32_t entry) {
  if (entry < 0 || entry >= list.ListCount()) return false;
  list.Choose(entry);
  return true;
}

bool TakesTyping(const Control& control) {
  if (const auto* const box = dynamic_cast<const TextBox*>(&control)) return !box->Locked();
  if (const auto* const list = dynamic_cast<const ListControl*>(&control)) {
    return list->ChangesByHand();
  }
  return dynamic_cast<const TypedControl*>(&control) != nullptr;
}

}  // namespace

Control& RootOf(Form& form) { return form; }

std::string LabelOf(Control& root, std::string_view path) {
  const Control* const control = root.Find(path);
  if (control == nullptr || dynamic_cast<const CaptionControl*>(control) != nullptr) return {};
  return FieldName(*control);
}

std::vector<ShownControl> ControlsOf(Control& root) {
  std::vector<ShownControl> all;
  AddBelow(root, all);
  return all;
}

std::vector<std::string> EntriesOf(Control& root, std::string_view path) {
  Control* const control = root.Find(path);
  std::vector<std::string> entries;
  if (const auto* const combo = dynamic_cast<const ComboBox*>(control)) {
    for (const ComboBox::Item& item : combo->Items()) entries.push_back(item.text);
  } else if (auto* const list = dynamic_cast<ListControl*>(control)) {
    if (!list->OffersRows()) list->FillList();
    for (const ListRow& row : list->Rows()) entries.push_back(row.text);
  }
  return entries;
}

bool TypeInto(Control& root, std::string_view path, const std::string& text) {
  Control* const control = Reachable(root, path);
  if (control == nullptr || !TakesTyping(*control)) return false;
  control->GotFocus();
  control->Type(text);
  control->LostFocus();
  return true;
}

bool ChooseEntry(Control& root, std::string_view path, std::int32_t entry) {
  Control* const control = Reachable(root, path);
  if (auto* const combo = dynamic_cast<ComboBox*>(control)) return ChooseFrom(*combo, entry);
  auto* const list = dynamic_cast<ListControl*>(control);
  return list != nullptr && list->ChangesByHand() && ChooseFrom(*list, entry);
}

bool Press(Control& root, std::string_view path) {
  Control* const control = Reachable(root, path);
  if (control == nullptr) return false;
  control->Click();
  return true;
}

bool Tick(Control& root, std::string_view path, bool checked) {
  auto* const box = dynamic_cast<CheckBox*>(Reachable(root, path));
  if (box == nullptr) return false;
  if ((box->Value() != 0) != checked) box->Click();
  return true;
}

bool PressKey(Control& root, std::string_view path, std::int32_t key, std::int32_t shift) {
  Control* const control = Reachable(root, path);
  if (control == nullptr) return false;
  auto* const form = dynamic_cast<Form*>(&root);
  if (form == nullptr) {
    root.KeyDown(key, shift);
    if (control != &root) control->KeyDown(key, shift);
    return true;
  }
  if (!form->Shown()) return false;
  if (control != &root) control->GotFocus();
  form->FormKeyDown(key, shift);
  return true;
}

std::vector<ShownEntry> EntriesOf(const Menu& menu) {
  std::vector<ShownEntry> entries;
  for (const Control* const child : menu.Children()) {
    const auto* const entry = dynamic_cast<const Menu*>(child);
    if (entry == nullptr || !entry->Visible()) continue;
    const std::string why_not = entry->Enabled() ? "" : entry->ToolTipText();
    entries.push_back(
        {entry->PathName(), entry->Caption(), why_not, entry->Enabled(), EntriesOf(*entry)});
  }
  return entries;
}

bool ChooseEntry(Menu& menu, std::string_view name) {
  auto* const entry = dynamic_cast<Menu*>(menu.Find(name));
  if (entry == nullptr) return false;
  for (const Control* up = entry; up != &menu; up = up->Parent()) {
    if (!up->Visible() || !up->Enabled()) return false;
  }
  entry->Click();
  return true;
}

}  // namespace vorek
