#ifndef VOREK_ENGINE_SHARED_HELPERS_H_
#define VOREK_ENGINE_SHARED_HELPERS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "state/process.h"
#include "widgets/basic_controls.h"

// The small procedures that all controls share.
namespace vorek {

// Of two texts the one whose numeric prefix is the greater; the second if they are equal.
std::string Max(const std::string& a, const std::string& b);

// Selects the first line whose item data is the value. True if there is one.
bool SelectComboItem(ComboBox& combo, std::int32_t value);

// Fills the names and the branch of the user in the globals. A name whose row is missing keeps its
// former value.
void LoadUserInfo(Process& process);

// Remembers the last source of a report, or forgets it. The order of the list isn't kept.
void CacheReport(MainModule& main, std::int32_t report_id, const std::string& source,
                 std::int16_t field_count);
void UncacheReport(MainModule& main, std::int32_t report_id);

}  // namespace vorek

#endif  // VOREK_ENGINE_SHARED_HELPERS_H_
