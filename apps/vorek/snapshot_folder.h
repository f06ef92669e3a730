#ifndef VOREK_APPS_VOREK_SNAPSHOT_FOLDER_H_
#define VOREK_APPS_VOREK_SNAPSHOT_FOLDER_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "author/grid_text.h"
#include "vorek/clock.h"

namespace vorek {

// A report of a snapshot: what was shown and how long it took.
struct SnapshotReport {
  std::string name;  // "203", "203-2" for its second run
  GridText grid;
  std::int64_t milliseconds = 0;
};

// The reports of a catalogue as they stood at one moment for one user.
struct Snapshot {
  std::int32_t user = -1;
  std::int32_t position = -1;
  std::int32_t employee = -1;
  std::int32_t period = -1;
  DateTime now;  // what the reports took for the time of day
  std::vector<SnapshotReport> reports;
};

// A snapshot is a folder: snapshot.txt (user, moment, the reports with their rows), times.txt
// (milliseconds) and a file NAME.txt for each run; see grid_text.h.

// Puts a snapshot under the path, all of it or nothing: a good one that stands there stays until
// the new one is whole and on the disk, and other files in it are kept. Throws Error for a folder
// that holds something else, and for what can't be written.
void WriteSnapshot(const std::string& path, const Snapshot& snapshot);

// Throws Error for a folder that holds none, or not all of one.
Snapshot ReadSnapshot(const std::string& path);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_SNAPSHOT_FOLDER_H_
