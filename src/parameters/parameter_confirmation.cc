#include "parameters/accounting_reports.h"
#include "parameters/parameter_text.h"
#include "parameters/vorek_parameters.h"
#include "text/key_list.h"

// The confirmation: from the widgets to the finished query.
namespace vorek {

void VorekParameters::Confirm() {
  if (Control* const refused = RefusedField()) {
    refused->SetFocus();
    return;
  }
  std::string query = query_;
  ListOfParameters.clear();
  ListOfVisualParameters.clear();
  process_.main.ParameterValues.clear();
  bool complete = false;
  IgnoreErrors([&] { complete = WriteValues(query); });
  if (!complete || saving_) return;
  values_ = ReadValues();
  if (folded_) ShowFold();
  userChoice = result = true;
  if (on_search) on_search(query);
}

bool VorekParameters::WriteValues(std::string& query) {
  for (const ParameterRow& row : ReadConditionRows(process_.dten().rssqlGeneral1, report_id_)) {
    if (!WriteValue(row, query)) return false;
  }
  return true;
}

// False if the widget may not be left empty, which the user has been told.
bool VorekParameters::WriteValue(const ParameterRow& row, std::string& query) {
  Control* const widget = widgets.Find(row.Id());
  const ParameterKind* const kind = FindKind(row.control_type);
  ParameterReading reading;
  if (widget != nullptr && kind != nullptr && kind->array == widget->Name()) {
    reading = kind->read(*widget);
  }
  const std::string literal = Literal(row.type, reading);
  process_.main.ParameterValues.push_back({row.parameter_id, reading.display_value});
  std::string_view suffix;
  if (widget != nullptr) {
    suffix = widget->Name() == "chk" ? "" : kRestricts;
    if (IsEmptyWidget(*widget)) {
      if (widget->Name() == "dat" && IsAccountingReport(report_id_)) {
        notices_.ShowMessage("خطا", "تاريخ بايد داراي مقدار باشد");
        return false;
      }
      suffix = kAlwaysTrue;
      process_.main.ParameterValues.back().display_value.clear();
    }
    query = PutLiteral(std::move(query), row.Marker(), literal, suffix);
  }
  query = DropSuffixOfCall(query, suffix);
  setParameterValue(ListOfParameters, row.Marker(), literal);
  setParameterValue(ListOfVisualParameters, row.Marker(), reading.display_value);
  return true;
}

}  // namespace vorek
