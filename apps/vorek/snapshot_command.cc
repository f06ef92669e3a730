#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adapters/system/system_clock.h"
#include "adapters/system/system_files.h"
#include "author/grid_difference.h"
#include "command.h"
#include "snapshot_folder.h"
#include "snapshot_plan.h"
#include "snapshot_run.h"
#include "text/persian_date.h"
#include "trouble.h"

namespace vorek {
namespace {

// A run that takes this many times as long, and so much longer, is told.
constexpr std::int64_t kSlower = 3;
constexpr std::int64_t kNoticeable = 200;  // milliseconds

struct SnapshotOptions {
  ConnectOptions connect;
  std::string folder;
  std::string parameters;
  std::string date;
  std::string format = "text";
  std::size_t most = 20;
  bool compare = false;
};

SnapshotPlan ReadPlan(const SnapshotOptions& options) {
  std::string beside = options.folder;
  while (beside.size() > 1 && beside.back() == '/') beside.pop_back();
  const std::string file = options.parameters.empty() ? beside + ".params" : options.parameters;
  if (options.parameters.empty() && !SystemFiles().Exists(file)) return {};
  return ParseSnapshotPlan(SystemFiles().Read(file));
}

// The machine's time of day, on the day that is wanted.
DateTime MomentOf(const std::string& date) {
  DateTime now = SystemClock().Now();
  if (date.empty()) return now;
  const auto day = text::ParseDate(date);
  if (!day || !text::IsPersianDate(*day)) {
    throw Error(ErrorNumber::kTypeMismatch, "--date takes a Persian date, as 1405/01/31: " + date);
  }
  const text::CalendarDate gregorian = text::ToGregorian(*day);
  return {gregorian.year, gregorian.month, gregorian.day, 12, 0, 0};
}

void Take(const SnapshotOptions& options) {
  SnapshotRun run(options.connect, MomentOf(options.date));
  const Snapshot snapshot = run.All(ReadPlan(options));
  WriteSnapshot(options.folder, snapshot);
  const auto count = [&](bool asks) {
    return std::count_if(snapshot.reports.begin(), snapshot.reports.end(),
                         [&](const SnapshotReport& report) {
                           const std::string& failure = report.grid.failure;
                           return !failure.empty() && (failure == kAsks) == asks;
                         });
  };
  std::cout << snapshot.reports.size() << " runs in " << options.folder << ": " << count(false)
            << " failed, " << count(true) << " asked for parameters\n";
  for (const SnapshotReport& report : snapshot.reports) {
    if (!report.grid.failure.empty()) {
      std::cout << "  " << report.name << ": " << report.grid.failure << '\n';
    }
  }
}

// --- Comparing -----------------------------------------------------------------------------------

// What became of a report of the snapshot, or of one that it hasn't.
struct ReportChange {
  std::string name;
  std::string title;
  bool added = false;
  bool removed = false;
  std::vector<GridChange> changes;
  std::int64_t before = 0;  // milliseconds; 0 in both if it isn't slower
  std::int64_t after = 0;

  bool Differs() const { return added || removed || !changes.empty(); }
};

const SnapshotReport* Find(const Snapshot& snapshot, const std::string& name) {
  const auto found =
      std::find_if(snapshot.reports.begin(), snapshot.reports.end(),
                   [&](const SnapshotReport& report) { return report.name == name; });
  return found == snapshot.reports.end() ? nullptr : &*found;
}

// One slow run may be the machine's: it counts if another one is slow too.
void CompareTimes(const SnapshotReport& before, const SnapshotReport& after, SnapshotRun& run,
                  ReportChange& change) {
  const auto slower = [&](std::int64_t milliseconds) {
    return milliseconds > kSlower * before.milliseconds &&
           milliseconds - before.milliseconds > kNoticeable;
  };
  if (!after.grid.failure.empty() || !before.grid.failure.empty()) return;
  if (!slower(after.milliseconds)) return;
  const SnapshotReport again = run.One(after.name, after.grid.report, after.grid.parameters);
  const std::int64_t best = std::min(after.milliseconds, again.milliseconds);
  if (!slower(best)) return;
  change.before = before.milliseconds;
  change.after = best;
}

std::vector<ReportChange> CompareAll(const Snapshot& before, const Snapshot& after,
                                     SnapshotRun& run) {
  std::vector<ReportChange> all;
  for (const SnapshotReport& was : before.reports) {
    ReportChange change{.name = was.name, .title = was.grid.title, .changes = {}};
    const SnapshotReport* const is = Find(after, was.name);
    change.removed = is == nullptr;
    if (is != nullptr) {
      change.changes = CompareGrids(was.grid, is->grid);
      CompareTimes(was, *is, run, change);
    }
    if (change.Differs() || change.after > 0) all.push_back(std::move(change));
  }
  for (const SnapshotReport& is : after.reports) {
    if (Find(before, is.name) != nullptr) continue;
    all.push_back({.name = is.name, .title = is.grid.title, .added = true, .changes = {}});
  }
  return all;
}

std::string ChangeText(const GridChange& change) {
  const std::string column = "column " + std::to_string(change.column) +
                             (change.header.empty() ? "" : " (" + change.header + ")");
  const std::string values = "\"" + change.before + "\" -> \"" + change.after + "\"";
  switch (change.kind) {
    case GridChange::Kind::kReport:
      return change.what + ": " + values;
    case GridChange::Kind::kColumn:
      return column + ", " + change.what + ": " + values;
    case GridChange::Kind::kCell:
      return "row " + std::to_string(change.row) + ", " + column + ": " + values;
    case GridChange::Kind::kRowAdded:
      return "row " + std::to_string(change.row) + " is new: " + change.after;
    case GridChange::Kind::kRowRemoved:
      return "row " + std::to_string(change.row) + " is gone: " + change.before;
  }
  return "";
}

void PrintChange(const ReportChange& change, std::size_t most) {
  const std::string head = "report " + change.name + ": ";
  if (change.added) std::cout << head << "is new, " << change.title << '\n';
  if (change.removed) std::cout << head << "is gone, " << change.title << '\n';
  for (std::size_t i = 0; i < std::min(most, change.changes.size()); ++i) {
    std::cout << head << ChangeText(change.changes[i]) << '\n';
  }
  if (change.changes.size() > most) {
    std::cout << head << "and " << change.changes.size() - most << " more\n";
  }
  if (change.after > 0) {
    std::cout << head << "slower, " << change.before << " ms -> " << change.after << " ms\n";
  }
}

using Json = nlohmann::ordered_json;

Json ChangeJson(const GridChange& change) {
  static constexpr const char* kKinds[] = {"report", "column", "cell", "row added", "row removed"};
  Json json = {{"kind", kKinds[static_cast<int>(change.kind)]}};
  if (!change.what.empty()) json["what"] = change.what;
  if (change.row > 0) json["row"] = change.row;
  const bool column =
      change.kind == GridChange::Kind::kColumn || change.kind == GridChange::Kind::kCell;
  if (column) {
    json["column"] = change.column;
    json["header"] = change.header;
  }
  json["before"] = change.before;
  json["after"] = change.after;
  return json;
}

void PrintJson(const std::vector<ReportChange>& changes) {
  Json list = Json::array();
  for (const ReportChange& change : changes) {
    Json json = {{"report", change.name}, {"title", change.title}};
    json["state"] = change.added ? "new" : change.removed ? "gone" : "there";
    json["changes"] = Json::array();
    for (const GridChange& one : change.changes) json["changes"].push_back(ChangeJson(one));
    if (change.after > 0) json["slower"] = {{"before", change.before}, {"after", change.after}};
    list.push_back(std::move(json));
  }
  std::cout << list.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
}

// The user of the snapshot, but for what the command names.
ConnectOptions UserOf(const Snapshot& before, ConnectOptions connect) {
  if (connect.user == -1) connect.user = static_cast<std::int16_t>(before.user);
  if (connect.position == -1) connect.position = static_cast<std::int16_t>(before.position);
  if (connect.employee == -1) connect.employee = static_cast<std::int16_t>(before.employee);
  if (connect.period == -1) connect.period = before.period;
  return connect;
}

bool Compare(const SnapshotOptions& options) {
  const Snapshot before = ReadSnapshot(options.folder);
  SnapshotRun run(UserOf(before, options.connect),
                  options.date.empty() ? before.now : MomentOf(options.date));
  const Snapshot after = run.All(ReadPlan(options));
  const std::vector<ReportChange> changes = CompareAll(before, after, run);
  const auto differ = std::count_if(changes.begin(), changes.end(),
                                    [](const ReportChange& change) { return change.Differs(); });
  if (options.format == "json") {
    PrintJson(changes);
  } else {
    for (const ReportChange& change : changes) PrintChange(change, options.most);
    std::cout << differ << " of " << std::max(before.reports.size(), after.reports.size())
              << " runs differ\n";
  }
  return differ > 0;
}

void Run(const SnapshotOptions& options) {
  if (!options.compare && options.connect.user == -1) {
    std::cerr << "--user is required: the reports run with the rights of that user\n";
    throw CLI::RuntimeError(2);
  }
  bool differs = false;
  TellTrouble([&] { options.compare ? void(differs = Compare(options)) : Take(options); });
  std::cout.flush();
  if (differs) throw CLI::RuntimeError(kFoundDifferences);
}

}  // namespace

void AddSnapshotCommand(CLI::App& app) {
  auto options = std::make_shared<SnapshotOptions>();
  CLI::App* const command = app.add_subcommand(
      "snapshot", "Keep what all reports show in a folder, or tell what changed since");
  command->add_option("DIR", options->folder, "the folder of the snapshot")->required();
  AddDatabaseOption(*command, options->connect);
  AddUserOptions(*command, options->connect);
  command->get_option("--user")->required(false);
  command->add_flag("--compare", options->compare, "run the reports again and tell what changed");
  command->add_option("--params-file", options->parameters,
                      "lines \"203 @1=5\" or \"231 skip\"; else DIR.params, if it is there");
  command->add_option("--date", options->date,
                      "the day that reports take for today, as 1405/01/31");
  command->add_option("--most", options->most, "changes of a report that are told, 20 by default");
  command->add_option("--format", options->format, "of the comparison: text or json")
      ->check(CLI::IsMember({"text", "json"}));
  command->footer(
      "Exit codes: 0 written, or nothing changed; 1 something changed; 2 wrong usage; 3 the\n"
      "reports couldn't be run, or the folder not be read or written; 130 interrupted.");
  command->callback([options] { Run(*options); });
}

}  // namespace vorek
