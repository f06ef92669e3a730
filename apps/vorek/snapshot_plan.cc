#include "snapshot_plan.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek {
namespace {

constexpr const char* kBlanks = " \t\r";

std::string Trimmed(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return "";
  return std::string(line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin));
}

void TakeLine(const std::string& line, int number, SnapshotPlan& plan) {
  if (line.empty() || line.front() == '#') return;
  const std::size_t end = line.find_first_of(kBlanks);
  const std::string report = line.substr(0, end);
  const std::string rest = end == std::string::npos ? "" : Trimmed(line.substr(end));
  const bool numbered =
      report.size() < 10 && report.find_first_not_of("0123456789") == std::string::npos;
  const bool skip = rest == "skip";
  if (!numbered || !(skip || rest.starts_with('@'))) {
    throw Error(ErrorNumber::kInvalidCall,
                "Line " + std::to_string(number) +
                    " of the parameters is neither NUMBER @1=VALUE nor NUMBER skip: " + line);
  }
  SnapshotPlan::Entry& entry = plan.entries[std::stoi(report)];
  entry.skip = entry.skip || skip;
  if (!skip) entry.parameters.push_back(rest);
}

}  // namespace

SnapshotPlan ParseSnapshotPlan(std::string_view text) {
  SnapshotPlan plan;
  int number = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    TakeLine(Trimmed(text.substr(begin, end - begin)), ++number, plan);
    begin = end + 1;
  }
  return plan;
}

}  // namespace vorek
