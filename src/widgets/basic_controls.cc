#include "widgets/basic_controls.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {

using property::Argument;
using property::ReadOnly;
using property::ReadWrite;
using Arguments = std::vector<std::string>;

const PropertyTable& CaptionControl::OwnProperties() const {
  static const PropertyTable table = {
      {"Caption",
       [](Control& c, const Arguments&) { return static_cast<CaptionControl&>(c).Caption(); },
       [](Control& c, const Arguments&, const std::string& v) {
         static_cast<CaptionControl&>(c).SetCaption(v);
       }}};
  return table;
}

void Button::Click() {
  if (Enabled() && Visible()) Control::Click();
}

void Button::KeyDown(int key_code, int shift) {
  constexpr int kEnter = 13;
  constexpr int kBlank = 32;
  constexpr int kCtrlAndAlt = 2 + 4;
  CaptionControl::KeyDown(key_code, shift);
  if ((key_code == kEnter || key_code == kBlank) && (shift & kCtrlAndAlt) == 0) Click();
}

void TextBox::Type(const std::string& text) {
  if (!Locked() && Enabled()) SetText(text);
}

void TextBox::SetText(std::string text) {
  if (text != text_) sel_length_ = 0;
  if (Assign(text_, std::move(text), "Text") && on_change) on_change();
}

void TextBox::SelectAll() {
  sel_length_ = static_cast<std::int32_t>(text::Length(text_));
  Changed("SelLength");
}

const PropertyTable& TextBox::OwnProperties() const {
  static const PropertyTable table = {
      {"Text", [](Control& c, const Arguments&) { return static_cast<TextBox&>(c).Text(); },
       [](Control& c, const Arguments&, const std::string& v) {
         static_cast<TextBox&>(c).SetText(v);
       }},
      ReadOnly("SelLength", &TextBox::SelLength),
      ReadWrite("Locked", &TextBox::Locked, &TextBox::SetLocked),
      ReadOnly("MultiLine", &TextBox::MultiLine)};
  return table;
}

void CheckBox::Click() {
  if (!Enabled()) return;
  SetValue(value_ == 0 ? 1 : 0);
  Control::Click();
}

void CheckBox::SetValue(std::int32_t value) {
  if (Assign(value_, value, "Value") && on_change) on_change();
}

const PropertyTable& CheckBox::OwnProperties() const {
  static const PropertyTable table = [] {
    PropertyTable all = {ReadWrite("Value", &CheckBox::Value, &CheckBox::SetValue)};
    all.push_back({"Caption",
                   [](Control& c, const Arguments&) { return static_cast<CheckBox&>(c).Caption(); },
                   [](Control& c, const Arguments&, const std::string& v) {
                     static_cast<CheckBox&>(c).SetCaption(v);
                   }});
    return all;
  }();
  return table;
}

void ComboBox::Choose(std::int32_t index) {
  SetListIndex(index);
  Control::Click();
}

std::string ComboBox::TakeTyped(const std::string& typed) {
  if (editable_) {
    TakeAnyText(typed);
    return {};
  }
  const std::string wanted = FoldTyped(typed);
  if (wanted.empty()) {
    SetListIndex(-1);
    return {};
  }
  const std::optional<std::int32_t> key = TypedKey(typed);
  std::int32_t found = -1;
  std::int32_t matches = 0;
  for (std::int32_t i = 0; i < ListCount(); ++i) {
    const std::string line = FoldTyped(At(i).text);
    if (key ? At(i).data == *key : line == wanted) {
      Choose(i);
      return {};
    }
    if (key || !text::Contains(line, wanted)) continue;
    found = i;
    ++matches;
  }
  if (matches == 0) return NoRowText(typed);
  if (matches > 1) return SeveralRowsText(typed);
  Choose(found);
  return {};
}

// The line with this very text is chosen with it.
void ComboBox::TakeAnyText(const std::string& text) {
  const auto same = std::find_if(items_.begin(), items_.end(),
                                 [&](const Item& item) { return item.text == text; });
  SetListIndex(same == items_.end() ? -1 : static_cast<std::int32_t>(same - items_.begin()));
  Assign(typed_, text, "Text");
}

std::int32_t ComboBox::FindLine(const std::string& head, std::int32_t from) const {
  const std::string wanted = FoldTyped(head);
  for (std::int32_t i = 0; i < ListCount(); ++i) {
    const std::int32_t line = (std::max(from, 0) + i) % ListCount();
    if (FoldTyped(At(line).text).starts_with(wanted)) return line;
  }
  return -1;
}

const ComboBox::Item& ComboBox::At(std::int32_t index) const {
  if (index >= 0 && index < ListCount()) return items_[static_cast<std::size_t>(index)];
  throw Error(ErrorNumber::kSubscript, Path() + " has no line " + std::to_string(index));
}

std::string ComboBox::Text() const {
  if (editable_) return typed_;
  return list_index_ < 0 ? "" : At(list_index_).text;
}

void ComboBox::SetListIndex(std::int32_t index) {
  if (index != -1) At(index);
  DropRefusal();
  if (editable_) Assign(typed_, index == -1 ? std::string() : At(index).text, "Text");
  if (Assign(list_index_, index, "ListIndex") && on_change) on_change();
}

void ComboBox::AddItem(std::string text, std::int32_t data) {
  items_.push_back({std::move(text), data});
  Changed("List");
}

void ComboBox::Clear() {
  items_.clear();
  Changed("List");
  SetListIndex(-1);
}

const PropertyTable& ComboBox::OwnProperties() const {
  static const PropertyTable own = {
      ReadWrite("ListIndex", &ComboBox::ListIndex, &ComboBox::SetListIndex),
      ReadOnly("ListCount", &ComboBox::ListCount),
      ReadOnly("Text", &ComboBox::Text),
      {"List",
       [](Control& c, const Arguments& a) {
         return static_cast<ComboBox&>(c).At(Argument(a, 0)).text;
       },
       nullptr},
      {"ItemData",
       [](Control& c, const Arguments& a) {
         return property::ToText(static_cast<ComboBox&>(c).At(Argument(a, 0)).data);
       },
       nullptr}};
  static const PropertyTable table = property::Join(own, TypedControl::OwnProperties());
  return table;
}

void Timer::Elapse() {
  if (Enabled() && on_timer) on_timer();
}

const PropertyTable& Timer::OwnProperties() const {
  static const PropertyTable table = {ReadWrite("Interval", &Timer::Interval, &Timer::SetInterval)};
  return table;
}

const PropertyTable& VorekProgressBar::OwnProperties() const {
  static const PropertyTable table = {
      ReadWrite("Value", &VorekProgressBar::Value, &VorekProgressBar::SetValue)};
  return table;
}

}  // namespace vorek
