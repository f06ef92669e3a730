#include "ask.h"

#include <algorithm>
#include <string>

#include "interrupt_watch.h"
#include "text/utf8.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

constexpr std::int32_t kShownChoices = 20;

std::string KindText(const ParameterRow& row, const Control& widget) {
  const std::string& array = widget.Name();
  if (array == "dat") return "date, yyyy/mm/dd; t is today";
  if (array == "tim") return "time, hh:mm";
  if (array == "dur") return "hours:minutes, or hours";
  if (array == "acr") return "amount";
  if (array == "ntp") return "form type:key, #key, or a part of a name";
  if (array == "chk") return "1 or 0";
  if (array == "mlt") return "keys or names with commas, or * for all";
  if (array == "cmb" || array == "slt" || array == "app") return "#key, or a part of the name";
  const bool text = row.type.find("char") != std::string::npos || row.type == "text" ||
                    row.type == "ntext" || row.type == "string";
  return text ? "text" : "number";
}

// "#11  105  a name": what may be typed for a row, its key and its other code, and the row's text.
void PrintRow(const ListRow& row, std::ostream& out) {
  out << "  #";
  if (row.form_type != 0) out << row.form_type << ':';
  out << row.id << "  ";
  if (!row.alternative.empty()) out << row.alternative << "  ";
  out << row.text << '\n';
}

void PrintRows(ListControl& list, std::ostream& out) {
  const std::int32_t shown = std::min(list.ListCount(), kShownChoices);
  for (std::int32_t i = 0; i < shown; ++i) PrintRow(list.At(i), out);
  if (list.MoreRows() || shown < list.ListCount()) out << "  ... and more\n";
  if (!list.ListError().empty()) out << "  " << list.ListError() << '\n';
}

void PrintChoices(Control& widget, std::ostream& out) {
  if (auto* const combo = dynamic_cast<ComboBox*>(&widget)) {
    for (const ComboBox::Item& item : combo->Items()) {
      PrintRow({.id = item.data, .text = item.text, .alternative = {}}, out);
    }
  } else if (auto* const list = dynamic_cast<ListControl*>(&widget)) {
    list->FillList();
    PrintRows(*list, out);
  }
}

bool Refuses(const Control& widget) {
  const auto* const typed = dynamic_cast<const TypedControl*>(&widget);
  return typed != nullptr && typed->Refuses();
}

// Returns why the answer isn't taken, "" if it is.
std::string Answer(Control& widget, const std::string& answer) {
  if (answer == "-") {
    ResetWidget(widget);
  } else if (auto* const check = dynamic_cast<CheckBox*>(&widget)) {
    if (answer != "0" && answer != "1") return InGuillemets(answer) + " 0 يا 1 نيست";
    check->SetValue(answer == "1" ? 1 : 0);
  } else {
    widget.Type(answer);
  }
  const auto* const typed = dynamic_cast<const TypedControl*>(&widget);
  return typed == nullptr ? "" : typed->Refusal();
}

std::string Default(const ParameterRow& row, Control& widget) {
  if (IsEmptyWidget(widget)) return "";
  return " [" + FindKind(row.control_type)->read(widget).display_value + "]";
}

// What was understood, as the field shows it.
void PrintTaken(const ParameterRow& row, Control& widget, std::ostream& out) {
  if (IsEmptyWidget(widget)) return;
  out << "  = " << FindKind(row.control_type)->read(widget).display_value << '\n';
}

// False at the end of input.
bool ReadAnswer(std::istream& in, std::string& answer) {
  const InterruptPause pause;
  return static_cast<bool>(std::getline(in, answer));
}

// False at the end of input.
bool AskField(const VorekParameters::Field& field, std::istream& in, std::ostream& out) {
  Control& widget = *field.widget;
  out << field.row.description << " (" << KindText(field.row, widget) << ")\n";
  PrintChoices(widget, out);
  for (std::string answer;;) {
    out << "  " << Default(field.row, widget) << "? " << std::flush;
    if (!ReadAnswer(in, answer)) return false;
    const bool blank = text::TrimView(answer).empty();
    if (blank && !Refuses(widget)) return true;
    if (blank) answer = static_cast<TypedControl&>(widget).RefusedText();
    const std::string reason = Answer(widget, text::Trim(answer));
    if (reason.empty()) {
      PrintTaken(field.row, widget, out);
      return true;
    }
    out << "  " << reason << '\n';
    if (auto* const list = dynamic_cast<ListControl*>(&widget)) PrintRows(*list, out);
  }
}

}  // namespace

bool AskParameters(VorekParameters& panel, std::istream& in, std::ostream& out) {
  out << panel.lblCaption.Caption()
      << ": an empty answer keeps what stands in brackets, - empties it; behind an answer that "
         "isn't "
         "taken only another one or - goes on.\n";
  for (;;) {
    bool asked = false;
    for (const VorekParameters::Field& field : panel.Fields()) {
      if (!field.row.visible || field.widget->Name() == "lbl") continue;
      if (!AskField(field, in, out)) return false;
      asked = true;
    }
    panel.cmdOk.Click();
    if (panel.result) return true;
    // Nothing that could be answered in another way.
    if (!asked) return false;
  }
}

}  // namespace vorek
