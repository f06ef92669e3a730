#include "snapshot_run.h"

#include <atomic>
#include <chrono>
#include <utility>

#include "author/opened_tree.h"
#include "catalog/report_row.h"
#include "engine/report_control.h"
#include "engine/stop_reason.h"
#include "engine/world_state.h"
#include "given_parameters.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/no_windows.h"
#include "widgets/form.h"

namespace vorek {
namespace {

class StandingClock : public Clock {
 public:
  explicit StandingClock(const DateTime& now) : now_(now) {}
  DateTime Now() const override { return now_; }

 private:
  DateTime now_;
};

}  // namespace

// Keeps what forms say, closes each, and stops a run at Ctrl+C.
class SnapshotRun::Listener : public NoWindows {
 public:
  void ShowModal(Form& form) override {
    const std::string detail = form.DetailText();
    if (!form.MainText().empty()) {
      said_.push_back(form.MainText() + (detail.empty() ? "" : " " + detail));
    }
    form.CloseBox();
  }
  bool PassGoesOn() override { return !interrupted_; }

  std::vector<std::string> TakeSaid() { return std::exchange(said_, {}); }
  // May be called from any thread.
  void Interrupt() { interrupted_ = true; }
  bool Interrupted() const { return interrupted_; }

 private:
  std::vector<std::string> said_;
  std::atomic<bool> interrupted_ = false;
};

SnapshotRun::SnapshotRun(const ConnectOptions& connect, const DateTime& now)
    : connect_(connect),
      now_(now),
      connection_string_(ConnectionString(connect)),
      listener_(std::make_shared<Listener>()) {
  WorldOptions options = ConsoleWorld();
  options.windows = listener_;
  options.clock = std::make_shared<StandingClock>(now);
  world_ = std::make_unique<World>(std::move(options));
  world_->State().process.data.SetProgress(
      [this](std::size_t) { return !listener_->Interrupted(); });
  watch_ = std::make_unique<InterruptWatch>([this] {
    listener_->Interrupt();
    world_->Cancel();
  });
}

SnapshotRun::~SnapshotRun() { watch_.reset(); }

Snapshot SnapshotRun::All(const SnapshotPlan& plan) {
  Snapshot snapshot{connect_.user, connect_.position, connect_.employee, connect_.period, now_, {}};
  DataSession& data = world_->State().process.data;
  data.Rebind(connection_string_);
  const std::vector<CatalogEntry> catalogue = ReadCatalog(data.Get().rssqlGeneral1);
  for (const auto& entry : plan.entries) {
    const std::int32_t report = entry.first;
    const bool there = std::any_of(catalogue.begin(), catalogue.end(),
                                   [&](const CatalogEntry& row) { return row.id == report; });
    for (const std::string& parameters : entry.second.parameters) {
      CheckGivenParameters(world_->State().process, report, parameters);
    }
    if (there) continue;
    throw Error(ErrorNumber::kItemNotFound,
                "The parameters name report " + std::to_string(report) + ", which isn't there.");
  }
  for (const CatalogEntry& entry : catalogue) AddRuns(entry.id, plan, snapshot);
  return snapshot;
}

void SnapshotRun::AddRuns(std::int32_t report, const SnapshotPlan& plan, Snapshot& snapshot) {
  const auto found = plan.entries.find(report);
  const SnapshotPlan::Entry entry =
      found == plan.entries.end() ? SnapshotPlan::Entry() : found->second;
  if (entry.skip) return;
  std::vector<std::string> runs = entry.parameters;
  if (runs.empty()) runs.emplace_back();
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const std::string name = std::to_string(report) + (i == 0 ? "" : "-" + std::to_string(i + 1));
    snapshot.reports.push_back(One(name, report, runs[i]));
  }
}

SnapshotReport SnapshotRun::One(const std::string& name, std::int32_t report,
                                const std::string& parameters) {
  listener_->TakeSaid();
  VorekReport1 control(*world_);
  control.SetOleConnectionString(connection_string_);
  control.SetUserID(connect_.user);
  control.SetPositionID(connect_.position);
  control.SetEmployeeID(connect_.employee);
  control.SetPeriodID(connect_.period);
  const auto begin = std::chrono::steady_clock::now();
  std::string failure;
  bool shown = false;
  try {
    shown = control.View(report, parameters);
  } catch (const Error& error) {
    failure = error.Description();
  }
  const auto spent = std::chrono::steady_clock::now() - begin;
  if (listener_->Interrupted()) throw Error(ErrorNumber::kCancelled, "interrupted");
  SnapshotReport result{
      name, {}, std::chrono::duration_cast<std::chrono::milliseconds>(spent).count()};
  const ReportState& state = control.Impl().state;
  result.grid.report = report;
  result.grid.title = state.Title;
  result.grid.parameters = parameters;
  TakeResult(control, shown, failure, result.grid);
  return result;
}

// The grid, or why there is none. A report that waits for its panel counts as shown.
void SnapshotRun::TakeResult(VorekReport1& control, bool shown, const std::string& failure,
                             GridText& grid) {
  const ReportState& state = control.Impl().state;
  const std::vector<std::string> said = listener_->TakeSaid();
  const bool marked = grid.parameters.empty() && text::Contains(state.roughSQL, "@");
  grid.failure = failure;
  if (failure.empty() && said.empty() && marked && (!shown || state.QueryRecordCount < 0)) {
    grid.failure = kAsks;
  } else if (failure.empty() && !shown) {
    grid.failure = said.empty() ? StopReasonOf(state) : said.back();
    if (grid.failure.empty()) grid.failure = "stops without a message";
  }
  if (!grid.failure.empty()) return;
  grid.messages = said;
  TakeCells(control.Impl(), grid);
}

// The rows of a tree that are closed would keep their figures out of the snapshot.
void SnapshotRun::TakeCells(ReportControl& control, GridText& grid) {
  ReportContext report = control.Context();
  if (&report.GridOnView() == &report.flxTranspose) return TakeGrid(report.flxTranspose, grid);
  try {
    grid.cut = OpenTree(report);
  } catch (const Error& error) {
    if (listener_->Interrupted()) throw Error(ErrorNumber::kCancelled, "interrupted");
    grid.failure = error.Description();
    return;
  }
  if (listener_->Interrupted()) throw Error(ErrorNumber::kCancelled, "interrupted");
  TakeGrid(control.flxMain, grid);
}

}  // namespace vorek
