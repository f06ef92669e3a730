#include "parameters/saved_settings.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "catalog/report_row.h"
#include "text/number.h"
#include "text/persian_date.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::string Without(const std::string& text, std::string_view letters) {
  std::string rest;
  std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
               [&](char c) { return letters.find(c) == std::string_view::npos; });
  return rest;
}

std::int32_t Number(const std::string& text) { return text::ToInt32(text::NumericPrefix(text)); }

// A date is stored as the Gregorian 20240320, or in the Persian calendar where it is compared with
// texts.
void ShowDate(VorekDate& date, const std::string& text) {
  const bool gregorian =
      text.size() == 8 && text.find_first_not_of("0123456789") == std::string::npos;
  if (!gregorian) {
    date.SetFarsiDate(text);
    return;
  }
  const std::int32_t digits = Number(text);
  date.SetValue({digits / 10000, digits / 100 % 100, digits % 100});
}

void ChooseLine(ComboBox& combo, std::int32_t data) {
  for (std::int32_t line = 0; line < combo.ListCount(); ++line) {
    if (combo.At(line).data == data) {
      combo.SetListIndex(line);
      return;
    }
  }
}

}  // namespace

std::string SettingOf(std::int32_t report_id, const std::string& name) {
  return "ReportID=" + std::to_string(report_id) + " and Name like '" +
         text::Replace(name, "'", "''") + "'";
}

std::vector<std::string> ReadSettingNames(Recordset& slot, std::int32_t report_id) {
  std::vector<std::string> names;
  OpenSlot(slot, "select *  from tblVorekReportParameterConfig Where ReportID=" +
                     std::to_string(report_id) + " Order by Name");
  for (; !slot.AtEnd(); slot.MoveNext()) names.push_back(TextOf(slot, "Name"));
  slot.Close();
  return names;
}

bool ReadSetting(Recordset& slot, std::int32_t report_id, const std::string& name,
                 std::string& list) {
  OpenSlot(slot, "Select ListOfParameters from tblVorekReportParameterConfig Where " +
                     SettingOf(report_id, name));
  const bool found = !slot.AtEnd();
  if (found) list = text::Replace(TextOf(slot, "ListOfParameters"), "''", "'");
  slot.Close();
  return found;
}

void WriteSetting(Recordset& slot, std::int32_t report_id, const std::string& name,
                  const std::string& list) {
  const auto quoted = [](const std::string& text) {
    return "'" + text::Replace(text, "'", "''") + "'";
  };
  OpenSlot(slot, "Delete tblVorekReportParameterConfig Where " + SettingOf(report_id, name));
  OpenSlot(slot,
           "Insert into tblVorekReportParameterConfig (ReportID, Name, ListOfParameters) Values (" +
               std::to_string(report_id) + ", " + quoted(name) + ", " + quoted(list) + ")");
  slot.Close();
}

void ShowStoredValue(Control& widget, const std::string& value) {
  const std::string& array = widget.Name();
  const std::string plain = Without(value, "'");
  if (array == "txt") {
    static_cast<TextBox&>(widget).SetText(plain);
  } else if (array == "dat") {
    ShowDate(static_cast<VorekDate&>(widget), plain);
  } else if (array == "slt") {
    static_cast<VorekSelector&>(widget).SetID(Number(value));
  } else if (array == "cmb") {
    ChooseLine(static_cast<ComboBox&>(widget), Number(value));
  } else if (array == "mlt") {
    static_cast<VorekMultiSelect&>(widget).SetSelectedIDs(Without(value, "'()"));
  } else if (array == "chk" || array == "ACK") {
    static_cast<CheckBox&>(widget).SetValue(Number(value));
  } else if (array == "acr") {
    static_cast<VorekCurrency&>(widget).SetText(value);
  } else if (array == "tim" || array == "dur" || array == "ntp") {
    ResetWidget(widget);
  }
}

}  // namespace vorek
