#include "parameters/form_get_text.h"
#include "parameters/saved_settings.h"
#include "parameters/vorek_parameters.h"
#include "text/key_list.h"
#include "text/number.h"
#include "text/utf8.h"

// The values of the form under names: its menu, loading, saving, and the user's shared filter.
namespace vorek {

// Where nobody asks anything there is nothing to save.
void VorekParameters::ShowSettingButtons() {
  const bool shown = !folded_ && !fields_.empty();
  cmdSaveParameterConfig.SetCaption("⤓");
  cmdSaveParameterConfig.SetToolTipText("ذخيره مقادير پارامترها با يك نام");
  cmdLoadParameterConfig.SetCaption("☰");
  const bool any = mnuConfig.Size() > 1;
  cmdLoadParameterConfig.SetToolTipText(any ? "پر كردن پارامترها از يك تنظيم ذخيره شده"
                                            : "اين گزارش تنظيم ذخيره شده ندارد.");
  for (Button* button : {&cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    button->SetVisible(shown);
  }
}

void VorekParameters::BuildSettingsMenu() {
  mnuConfig[0].SetVisible(true);
  mnuConfig.Unload(1);
  // A database from before the settings has no table of them.
  std::vector<std::string> names;
  IgnoreErrors([&] { names = ReadSettingNames(process_.dten().rssqlGeneral4, report_id_); });
  for (const std::string& name : names) {
    Menu& entry = mnuConfig.Load();
    entry.SetCaption(name);
    entry.on_click = [this, name] { LoadSetting(name); };
  }
  if (!names.empty()) mnuConfig[0].SetVisible(false);
  ShowSettingButtons();
  LayoutButtons();
}

void VorekParameters::LoadSetting(const std::string& name) {
  IgnoreErrors([&] {
    std::string list;
    if (ReadSetting(process_.dten().rssqlGeneral4, report_id_, name, list)) ShowSetting(list);
  });
}

// Selectors first: what follows them takes its own stored value then.
void VorekParameters::ShowSetting(const std::string& list) {
  const auto show = [&](bool selectors) {
    widgets.ForEach([&](Control& widget) {
      if ((widget.Name() == "slt") != selectors) return;
      ShowStored(widget, getParameterValue(list, "@" + widget.Tag()));
    });
  };
  show(true);
  const ParameterDependencies::Silence stored(dependencies_);
  show(false);
}

void VorekParameters::ShowStored(Control& widget, const std::string& value) {
  if (auto* const typed = dynamic_cast<TypedControl*>(&widget)) typed->DropRefusal();
  ShowStoredValue(widget, value);
}

// A text that a field doesn't take is no value to save.
void VorekParameters::SaveSetting() {
  if (Control* const refused = RefusedField()) {
    refused->SetFocus();
    return;
  }
  std::string name;
  bool changed = false;
  FormGetText form(process_, notices_);
  if (form.getText(name, report_id_, changed)) {
    ListOfParameters.clear();
    saving_ = true;
    IgnoreErrors([&] { Confirm(); });
    saving_ = false;
    WriteSetting(process_.dten().rssqlGeneral4, report_id_, name, ListOfParameters);
  }
  if (changed) BuildSettingsMenu();
}

bool VorekParameters::isFormEmpty() {
  bool empty = true;
  widgets.ForEach([&](Control& widget) {
    const std::string& array = widget.Name();
    if (array == "lbl" || array == "mlt" || array == "app") return;
    const auto* const check = dynamic_cast<const CheckBox*>(&widget);
    empty = empty && (check != nullptr ? check->Value() == 1 : IsEmptyWidget(widget));
  });
  return empty;
}

bool VorekParameters::SetSharedFilters() {
  bool dates_or_selectors = false;
  const bool read = IgnoreErrors([&] {
    Recordset& slot = process_.dten().rssqlGeneral4;
    OpenSlot(slot, "Select * from tblVorekReportParameterConfig Where UserID=" +
                       std::to_string(process_.main.GlobalUserID) + " and isShared=1");
    if (slot.AtEnd()) {
      slot.Close();
      return;
    }
    const std::string list = text::Replace(slot.Field("ListOfParameters").Text(), "''", "'");
    slot.Close();
    widgets.ForEach([&](Control& widget) {
      const std::string& array = widget.Name();
      if (array != "txt" && array != "dat" && array != "slt") return;
      const auto shared = SharedFilterIDs.find(text::TextToNumber(widget.Tag()));
      if (shared == SharedFilterIDs.end()) return;
      ShowStored(widget, getParameterValue(list, "@" + std::to_string(shared->second)));
      dates_or_selectors = dates_or_selectors || array != "txt";
    });
  });
  if (!read || !dates_or_selectors) return false;
  if (isFormEmpty()) {
    Reset();
  } else {
    Confirm();
  }
  return true;
}

}  // namespace vorek
