#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "catalog/report_row.h"
#include "command.h"
#include "engine/rights.h"
#include "engine/world_state.h"

namespace vorek {
namespace {

struct ListOptions {
  ConnectOptions connect;
  std::string format = "tsv";
};

// All reports, or those that the user may see.
std::vector<CatalogEntry> ReadReports(const ListOptions& options, bool of_user) {
  World world(ConsoleWorld());
  Process& process = world.State().process;
  process.data.Rebind(ConnectionString(options.connect));
  std::vector<CatalogEntry> reports = ReadCatalog(process.dten().rssqlGeneral1);
  std::erase_if(reports, [&](const CatalogEntry& entry) {
    return of_user && !HasReportRight(process, entry.id, options.connect.user);
  });
  return reports;
}

void PrintJson(const std::vector<CatalogEntry>& reports) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const CatalogEntry& entry : reports) {
    list.push_back({{"report", entry.id}, {"title", entry.title}});
  }
  std::cout << list.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void List(const ListOptions& options, bool of_user) {
  const std::vector<CatalogEntry> reports = ReadReports(options, of_user);
  if (options.format == "json") return PrintJson(reports);
  for (const CatalogEntry& entry : reports) std::cout << entry.id << '\t' << entry.title << '\n';
}

}  // namespace

void AddListCommand(CLI::App& app) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* const command = app.add_subcommand("list", "List the reports of a database");
  AddDatabaseOption(*command, options->connect);
  CLI::Option* const user = command->add_option("--user", options->connect.user,
                                                "only those that this user has the right to see");
  command->add_option("--format", options->format, "tsv, a report a line, or json")
      ->check(CLI::IsMember({"tsv", "json"}));
  command->callback([options, user] { List(*options, user->count() > 0); });
}

}  // namespace vorek
