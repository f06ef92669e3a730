#ifndef VOREK_ENGINE_QUERY_TEXT_H_
#define VOREK_ENGINE_QUERY_TEXT_H_

#include <string>
#include <vector>

#include "state/process.h"
#include "state/report_state.h"
#include "text/replacement.h"

// From a report's template to the text that runs: plain string work. No statement is parsed and no
// value is bound.
namespace vorek {

// Puts the values of a parameter string in place of the markers of the report's parameters. True if
// no "@" is left in the text.
bool SubstituteParameters(Process& process, std::int32_t report_id, std::string& roughSQL,
                          const std::string& parameter_string);

// Puts those values of a parameter string that aren't blank in place of their markers; the other
// markers stay.
void FillMarkers(Process& process, std::int32_t report_id, std::string& query,
                 const std::string& parameter_string);

// The values of the tokens, as SQL texts.
struct TokenValues {
  std::string report_date;  // today's Persian date in quotes
  std::string employee_id;
  std::string position_id;
  std::string report_time;  // hours and minutes in quotes
  std::string user_id;
};
// Those of a moment and of the host's numbers.
TokenValues TokenValuesOf(const DateTime& now, const ReportState& state, std::int32_t user_id);
std::vector<text::Replacement> TokenReplacements(const TokenValues& values);
// Replaces both spellings of each token, ignoring case.
std::string ReplaceTokens(const std::string& query, const TokenValues& values);

// Takes away the empty aliases that report builders leave behind.
std::string DropEmptyAliases(const std::string& query);

}  // namespace vorek

#endif  // VOREK_ENGINE_QUERY_TEXT_H_
