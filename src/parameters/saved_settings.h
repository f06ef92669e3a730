#ifndef VOREK_PARAMETERS_SAVED_SETTINGS_H_
#define VOREK_PARAMETERS_SAVED_SETTINGS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "catalog/data_session.h"
#include "parameters/parameter_kind.h"

// The values of a parameter form under a name: rows of tblVorekReportParameterConfig, which hold
// the key list of the literals (VorekParameters::ListOfParameters). They belong to a report and are
// seen by each of its users.
namespace vorek {

// The condition on one setting. The name is compared by "like", so that "%" and "_" in it stand for
// more than themselves; quotes in it are doubled.
std::string SettingOf(std::int32_t report_id, const std::string& name);

// The functions below throw what the database throws and leave the slot closed.

// The names of a report's settings in their order.
std::vector<std::string> ReadSettingNames(Recordset& slot, std::int32_t report_id);

// False if there is no such setting.
bool ReadSetting(Recordset& slot, std::int32_t report_id, const std::string& name,
                 std::string& list);

// Takes the place of a setting of that name.
void WriteSetting(Recordset& slot, std::int32_t report_id, const std::string& name,
                  const std::string& list);

// Shows a stored value, as the key list has it, in a widget of the form: without its quotes or
// brackets. A line that a combo box hasn't leaves its choice; times, durations and entities are
// cleared, since their literals can't be read back; panels and labels stay.
void ShowStoredValue(Control& widget, const std::string& value);

}  // namespace vorek

#endif  // VOREK_PARAMETERS_SAVED_SETTINGS_H_
