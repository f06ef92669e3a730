#include "ask.h"

#include <algorithm>
#include <optional>
#include <string>

#include "parameters/form_ask_user.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kShownChoices = 20;

std::string KindText(const ParameterRow& row, const Control& widget) {
  const std::string& array = widget.Name();
  if (array == "dat") return "date, yyyy/mm/dd";
  if (array == "tim") return "time, hh:mm";
  if (array == "dur") return "hours:minutes";
  if (array == "acr") return "amount";
  if (array == "ntp") return "form type:key, or a part of a name";
  if (array == "chk") return "1 or 0";
  if (array == "mlt") return "keys with commas, or * for all";
  if (array == "cmb" || array == "slt" || array == "app") return "#key, or a part of the name";
  const bool text = row.type.find("char") != std::string::npos || row.type == "text" ||
                    row.type == "ntext" || row.type == "string";
  return text ? "text" : "number";
}

void PrintChoice(std::ostream& out, std::int32_t key, const std::string& text) {
  out << "  #" << key << "  " << text << '\n';
}

void PrintRows(ListControl& list, std::ostream& out) {
  const std::int32_t shown = std::min(list.ListCount(), kShownChoices);
  for (std::int32_t i = 0; i < shown; ++i) PrintChoice(out, list.At(i).id, list.At(i).text);
  if (list.MoreRows() || shown < list.ListCount()) out << "  ... and more\n";
  if (!list.ListError().empty()) out << "  " << list.ListError() << '\n';
}

void PrintChoices(Control& widget, std::ostream& out) {
  if (auto* const combo = dynamic_cast<ComboBox*>(&widget)) {
    for (const ComboBox::Item& item : combo->Items()) PrintChoice(out, item.data, item.text);
  } else if (auto* const list = dynamic_cast<ListControl*>(&widget)) {
    list->FillList();
    PrintRows(*list, out);
  }
}

void ChooseLine(ComboBox& combo, const std::string& answer) {
  std::int32_t found = -1;
  std::int32_t matches = 0;
  const bool by_key = answer.starts_with('#');
  const std::int32_t key = by_key ? text::TextToNumber(answer.substr(1)) : 0;
  for (std::int32_t i = 0; i < combo.ListCount(); ++i) {
    const ComboBox::Item& item = combo.At(i);
    if (!by_key && text::EqualsIgnoreCase(item.text, answer)) return combo.Choose(i);
    if (by_key ? item.data != key : !text::ContainsIgnoreCase(item.text, answer)) continue;
    found = i;
    ++matches;
  }
  if (matches != 1) {
    throw Error(ErrorNumber::kTypeMismatch, matches == 0 ? "no line matches" : "several match");
  }
  combo.Choose(found);
}

void ChooseRow(ChoiceControl& choice, const std::string& answer) {
  if (!answer.starts_with('#')) return choice.Type(answer);
  choice.SetID(text::TextToNumber(answer.substr(1)));
  if (choice.IsNull()) throw Error(ErrorNumber::kTypeMismatch, "there is no row " + answer);
}

void Answer(Control& widget, const std::string& answer) {
  if (answer == "-") {
    ResetWidget(widget);
  } else if (auto* const combo = dynamic_cast<ComboBox*>(&widget)) {
    ChooseLine(*combo, answer);
  } else if (auto* const choice = dynamic_cast<ChoiceControl*>(&widget)) {
    ChooseRow(*choice, answer);
  } else if (auto* const list = dynamic_cast<VorekMultiSelect*>(&widget)) {
    if (answer == "*") return list->SelectAll();
    list->SetSelectedIDs(text::Replace(answer, "#", ""));
    if (list->NoneSelected()) throw Error(ErrorNumber::kTypeMismatch, "no key in " + answer);
  } else if (auto* const check = dynamic_cast<CheckBox*>(&widget)) {
    if (answer != "0" && answer != "1") throw Error(ErrorNumber::kTypeMismatch, "1 or 0");
    check->SetValue(answer == "1" ? 1 : 0);
  } else {
    widget.Type(answer);
  }
}

std::string Default(const ParameterRow& row, Control& widget) {
  if (IsEmptyWidget(widget)) return "";
  return " [" + FindKind(row.control_type)->read(widget).display_value + "]";
}

// False at the end of input.
bool AskField(const VorekParameters::Field& field, std::istream& in, std::ostream& out) {
  Control& widget = *field.widget;
  out << field.row.description << " (" << KindText(field.row, widget) << ")\n";
  PrintChoices(widget, out);
  for (std::string answer;;) {
    out << "  " << Default(field.row, widget) << "? " << std::flush;
    if (!std::getline(in, answer)) return false;
    if (text::TrimView(answer).empty()) return true;
    try {
      Answer(widget, text::Trim(answer));
      return true;
    } catch (const Error& error) {
      out << "  " << error.Description() << '\n';
      if (auto* const list = dynamic_cast<ListControl*>(&widget)) PrintRows(*list, out);
    }
  }
}

}  // namespace

bool AskParameters(VorekParameters& panel, std::istream& in, std::ostream& out) {
  out << panel.lblCaption.Caption()
      << ": an empty answer keeps what stands in brackets, - empties it.\n";
  do {
    for (const VorekParameters::Field& field : panel.Fields()) {
      const bool asked = field.row.visible && field.widget->Name() != "lbl";
      if (asked && !AskField(field, in, out)) return false;
    }
    panel.cmdOk.Click();
  } while (!panel.result);
  return true;
}

void AskingWindows::ShowModal(Form& form) {
  if (auto* const ask = dynamic_cast<FormAskUser*>(&form)) {
    if (!AskParameters(ask->VorekParameters1, in_, out_)) ask->VorekParameters1.cmdCancel.Click();
    return;
  }
  error_shown_ = error_shown_ || form.Name() == "FormError";
  ConsoleWindows::ShowModal(form);
}

}  // namespace vorek
