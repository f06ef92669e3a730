#ifndef VOREK_AUTHOR_REPORT_STAGES_H_
#define VOREK_AUTHOR_REPORT_STAGES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "state/process.h"
#include "state/report_state.h"

namespace vorek {

// One step of a report's text on its way to the database.
struct ReportStage {
  std::string name;  // "stored", "parameters", "tokens", "security", "rewritten"
  std::string note;  // what the step did or couldn't do; "" for nothing to tell
  std::string text;
};

struct ReportStages {
  bool found = false;  // the catalogue has the report
  std::string title;
  std::vector<ReportStage> stages;
  // What the database is given, in this order; nothing for a text that wouldn't run.
  std::vector<std::string> statements;
};

// A report's text step by step, as a run makes it for the host's numbers in `host` and the user of
// the process; nothing runs. Without a parameter string parameters get sample values. Values in
// texts that look like passwords are covered. Throws Error if the catalogue can't be read.
ReportStages ExplainReport(Process& process, const ReportState& host, std::int32_t report_id,
                           const std::string& parameter_string);

// A text with what follows Password=, PWD= and the like in its quoted texts as ***.
std::string WithCoveredSecrets(const std::string& query);

}  // namespace vorek

#endif  // VOREK_AUTHOR_REPORT_STAGES_H_
