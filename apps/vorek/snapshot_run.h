#ifndef VOREK_APPS_VOREK_SNAPSHOT_RUN_H_
#define VOREK_APPS_VOREK_SNAPSHOT_RUN_H_

#include <memory>
#include <string>

#include "command.h"
#include "interrupt_watch.h"
#include "snapshot_folder.h"
#include "snapshot_plan.h"
#include "vorek/clock.h"
#include "vorek/report.h"

namespace vorek {

// Why a report without values for its parameters isn't in a snapshot.
inline constexpr const char* kAsks = "asks for its parameters";

// Runs the reports of a catalogue one after the other, as one user at one moment.
class SnapshotRun {
 public:
  // now: what the reports take for the time of day.
  SnapshotRun(const ConnectOptions& connect, const DateTime& now);
  ~SnapshotRun();

  // All reports that the plan doesn't skip. Throws Error if the catalogue can't be read, for a plan
  // that names a report which isn't there, and Error(kCancelled) at Ctrl+C.
  Snapshot All(const SnapshotPlan& plan);
  // One report; a failure of it is part of what it gives.
  SnapshotReport One(const std::string& name, std::int32_t report, const std::string& parameters);

 private:
  class Listener;

  void TakeResult(VorekReport1& control, bool shown, const std::string& failure, GridText& grid);
  void TakeCells(ReportControl& control, GridText& grid);
  void AddRuns(std::int32_t report, const SnapshotPlan& plan, Snapshot& snapshot);

  ConnectOptions connect_;
  DateTime now_;
  std::string connection_string_;
  std::shared_ptr<Listener> listener_;
  std::unique_ptr<World> world_;
  std::unique_ptr<InterruptWatch> watch_;
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_SNAPSHOT_RUN_H_
