#include <iostream>
#include <memory>

#include "catalog/report_row.h"
#include "command.h"
#include "engine/world_state.h"

namespace vorek {

void AddListCommand(CLI::App& app) {
  auto options = std::make_shared<ConnectOptions>();
  CLI::App* const command = app.add_subcommand("list", "List the reports of a database");
  AddDatabaseOption(*command, *options);
  command->callback([options] {
    World world(ConsoleWorld());
    DataSession& data = world.State().process.data;
    data.Rebind(ConnectionString(*options));
    for (const CatalogEntry& entry : ReadCatalog(data.Get().rssqlGeneral1)) {
      std::cout << entry.id << '\t' << entry.title << '\n';
    }
  });
}

}  // namespace vorek
