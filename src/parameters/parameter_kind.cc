#include "parameters/parameter_kind.h"

#include <algorithm>
#include <iterator>

#include "text/key_list.h"
#include "text/number.h"
#include "text/utf8.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// --- Setting up
// ------------------------------------------------------------------------------------

Control& LoadText(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  return widgets.Load(widgets.txt);
}

Control& LoadLabel(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  return widgets.Load(widgets.lbl);
}

Control& LoadTime(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  return widgets.Load(widgets.tim);
}

Control& LoadCombo(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t) {
  ComboBox& combo = widgets.Load(widgets.cmb);
  widgets.FillCombo(combo, row.major_view);
  return combo;
}

Control& LoadCheck(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  CheckBox& check = widgets.Load(widgets.chk);
  check.SetValue(1);
  check.SetCaption("");
  return check;
}

Control& LoadDate(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  VorekDate& date = widgets.Load(widgets.dat);
  const DateTime now = widgets.process().clock().Now();
  date.SetToday({now.year, now.month, now.day});
  date.Clear();
  return date;
}

Control& LoadDuration(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  VorekDuration& duration = widgets.Load(widgets.dur);
  duration.Clear();
  return duration;
}

Control& LoadCurrency(ParameterWidgets& widgets, const ParameterRow&, std::int32_t) {
  VorekCurrency& currency = widgets.Load(widgets.acr);
  currency.SetText("");
  return currency;
}

Control& LoadMultiSelect(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t) {
  VorekMultiSelect& list = widgets.LoadList(widgets.mlt);
  list.SetViewMajor(row.major_view);
  list.SetViewMinor(row.minor_view);
  list.SetOrderByClause(row.order_clause);
  list.FillList();
  return list;
}

void SetUpChoice(ParameterWidgets& widgets, ChoiceControl& choice, const ParameterRow& row) {
  choice.SetViewMinor(row.minor_view);
  choice.SetViewMajor(row.major_view);
  choice.setNull();
  choice.SetCaption(row.name);
  choice.SetSupportAlternative(widgets.HasAlternative(row.major_view));
}

Control& LoadSelector(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t) {
  VorekSelector& selector = widgets.LoadList(widgets.slt);
  SetUpChoice(widgets, selector, row);
  return selector;
}

Control& LoadPanel(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t given_value) {
  VorekPickerPanel& panel = widgets.LoadList(widgets.app);
  SetUpChoice(widgets, panel, row);
  if (given_value >= 1 && !text::TrimView(row.where_clause).empty()) {
    panel.SetWhereClause(
        text::ReplaceIgnoreCase(row.where_clause, "#", std::to_string(given_value)));
  }
  panel.FillList();
  return panel;
}

Control& LoadEntity(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t) {
  VorekEntityPicker& picker = widgets.LoadList(widgets.ntp);
  if (!text::TrimView(row.minor_view).empty()) picker.SetViewMinor(row.minor_view);
  if (!text::TrimView(row.major_view).empty()) picker.SetViewMajor(row.major_view);
  picker.setNull();
  return picker;
}

// --- Reading
// ---------------------------------------------------------------------------------------

ParameterReading ReadText(Control& widget) {
  const std::string& text = static_cast<TextBox&>(widget).Text();
  return {text::ExactNumber(PlainTyped(text)), text};
}

ParameterReading ReadLabel(Control& widget) { return {"", static_cast<Label&>(widget).Caption()}; }

ParameterReading ReadTime(Control& widget) {
  const auto& time = static_cast<VorekTime&>(widget);
  return {std::to_string(time.GetTimeValue()), time.GetTimeFormatted()};
}

ParameterReading ReadDuration(Control& widget) {
  const auto& duration = static_cast<VorekDuration&>(widget);
  return {std::to_string(duration.GetDurationValue()), duration.GetDuration()};
}

ParameterReading ReadCombo(Control& widget) {
  const auto& combo = static_cast<ComboBox&>(widget);
  const std::int32_t line = combo.ListIndex();
  return {line < 0 ? "-1" : std::to_string(combo.At(line).data), combo.Text()};
}

ParameterReading ReadCheck(Control& widget) {
  const std::string value = std::to_string(static_cast<CheckBox&>(widget).Value());
  return {value, value};
}

ParameterReading ReadDate(Control& widget) {
  const auto& date = static_cast<VorekDate&>(widget);
  return {date.EnglishDate(), date.FarsiDate()};
}

ParameterReading ReadCurrency(Control& widget) {
  const auto& currency = static_cast<VorekCurrency&>(widget);
  return {currency.Value(), currency.Text()};
}

ParameterReading ReadMultiSelect(Control& widget) {
  const auto& list = static_cast<VorekMultiSelect&>(widget);
  const bool open = list.AllSelected() || list.NoneSelected();
  const std::string ids = open ? "-1" : list.SelectedIDs();
  return {"(" + ids + ")", ids};
}

ParameterReading ReadChoice(Control& widget) {
  const auto& choice = static_cast<ChoiceControl&>(widget);
  return {std::to_string(choice.ID()), choice.Description()};
}

ParameterReading ReadEntity(Control& widget) {
  const auto& picker = static_cast<VorekEntityPicker&>(widget);
  std::string list;
  setParameterValue(list, "FormTypeID", std::to_string(picker.FormTypeID()));
  setParameterValue(list, "FormID", std::to_string(picker.FormID()));
  return {list, text::Replace(list, "&", ":")};
}

constexpr ParameterKind kKinds[] = {
    {1, "dat", 0, false, true, LoadDate, ReadDate},
    {2, "slt", 0, false, true, LoadSelector, ReadChoice},
    {3, "tim", 0, false, false, LoadTime, ReadTime},
    {4, "slt", 1, false, true, LoadSelector, ReadChoice},
    {9, "app", 0, true, true, LoadPanel, ReadChoice},
    {10, "dur", 0, false, false, LoadDuration, ReadDuration},
    {11, "acr", 0, true, true, LoadCurrency, ReadCurrency},
    {13, "ntp", 0, true, true, LoadEntity, ReadEntity},
    {1001, "lbl", 0, true, true, LoadLabel, ReadLabel},
    {1002, "txt", 0, true, true, LoadText, ReadText},
    {1003, "cmb", 0, false, true, LoadCombo, ReadCombo},
    {1006, "chk", 0, true, false, LoadCheck, ReadCheck},
    {1007, "mlt", 0, true, true, LoadMultiSelect, ReadMultiSelect},
};

// --- Emptiness, by array
// ----------------------------------------------------------------------------

struct ArrayRule {
  std::string_view array;
  bool (*is_empty)(Control&);
  void (*reset)(Control&);
};

constexpr ArrayRule kArrays[] = {
    {"txt", [](Control& c) { return static_cast<TextBox&>(c).Text().empty(); },
     [](Control& c) { static_cast<TextBox&>(c).SetText(""); }},
    {"acr",
     [](Control& c) { return text::TrimView(static_cast<VorekCurrency&>(c).Text()).empty(); },
     [](Control& c) { static_cast<VorekCurrency&>(c).SetText(""); }},
    {"cmb", [](Control& c) { return static_cast<ComboBox&>(c).ListIndex() == -1; },
     [](Control& c) { static_cast<ComboBox&>(c).SetListIndex(-1); }},
    {"mlt",
     [](Control& c) {
       const auto& list = static_cast<VorekMultiSelect&>(c);
       return list.AllSelected() || list.NoneSelected();
     },
     [](Control& c) { static_cast<VorekMultiSelect&>(c).setNull(); }},
    {"slt", [](Control& c) { return static_cast<VorekSelector&>(c).IsNull(); },
     [](Control& c) { static_cast<VorekSelector&>(c).setNull(); }},
    {"app", [](Control& c) { return static_cast<VorekPickerPanel&>(c).IsNull(); }, nullptr},
    {"ntp", [](Control& c) { return static_cast<VorekEntityPicker&>(c).IsNull(); },
     [](Control& c) { static_cast<VorekEntityPicker&>(c).setNull(); }},
    {"tim", [](Control& c) { return static_cast<VorekTime&>(c).IsNull(); },
     [](Control& c) { static_cast<VorekTime&>(c).Clear(); }},
    {"dur", [](Control& c) { return static_cast<VorekDuration&>(c).IsNull(); },
     [](Control& c) { static_cast<VorekDuration&>(c).Clear(); }},
    {"dat", [](Control& c) { return static_cast<VorekDate&>(c).IsNull(); },
     [](Control& c) { static_cast<VorekDate&>(c).Clear(); }},
    {"chk", nullptr, [](Control& c) { static_cast<CheckBox&>(c).SetValue(1); }},
    {"ACK", nullptr, [](Control& c) { static_cast<CheckBox&>(c).SetValue(1); }},
    {"lbl", nullptr, nullptr},
};

const ArrayRule& RuleOf(const Control& widget) {
  return *std::find_if(std::begin(kArrays), std::end(kArrays),
                       [&](const ArrayRule& rule) { return rule.array == widget.Name(); });
}

}  // namespace

const ParameterKind* FindKind(std::int32_t control_type) {
  const auto* const found =
      std::find_if(std::begin(kKinds), std::end(kKinds),
                   [&](const ParameterKind& kind) { return kind.control_type == control_type; });
  return found == std::end(kKinds) ? nullptr : found;
}

bool IsEmptyWidget(Control& widget) {
  const ArrayRule& rule = RuleOf(widget);
  return rule.is_empty != nullptr && rule.is_empty(widget);
}

void ResetWidget(Control& widget) {
  const ArrayRule& rule = RuleOf(widget);
  if (rule.reset != nullptr) rule.reset(widget);
}

}  // namespace vorek
