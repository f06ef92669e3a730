#ifndef VOREK_APPS_VOREK_SNAPSHOT_PLAN_H_
#define VOREK_APPS_VOREK_SNAPSHOT_PLAN_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// With which values the reports of a catalogue run for a snapshot.
struct SnapshotPlan {
  struct Entry {
    bool skip = false;
    std::vector<std::string> parameters;  // a run for each string
  };
  std::map<std::int32_t, Entry> entries;  // by report
};

// Lines "NUMBER PARAMETERS", as `203 @1=5&@2='x'`, several of a report for several runs, or "NUMBER
// skip"; "#" begins a comment line. Throws Error(kInvalidCall) with the line that is none of these.
SnapshotPlan ParseSnapshotPlan(std::string_view text);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_SNAPSHOT_PLAN_H_
