#include "odbc/postgres_server.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "vorek/odbc.h"

namespace vorek::odbc {

PostgresServer::PostgresServer() {
  std::string folder = "/tmp/vorek-postgres-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = folder;
  Run("make");
  Run("start");
}

PostgresServer::~PostgresServer() {
  const std::string command = "tests/odbc/postgres remove " + folder_;
  if (std::system(command.c_str()) != 0) std::abort();
}

void PostgresServer::Run(const std::string& command) const {
  const std::string line = "tests/odbc/postgres " + command + " " + folder_;
  if (std::system(line.c_str()) != 0) throw std::runtime_error(line + " failed");
}

std::string PostgresServer::ConnectionString() const {
  return "Provider=MSDASQL;Driver={PostgreSQL Unicode};Servername=" + folder_ +
         ";Database=postgres;User ID=vorek;BoolsAsChar=0";
}

PostgresServer& SharedPostgres() {
  static PostgresServer server;
  return server;
}

void WaitUntilSleeping(const PostgresServer& server) {
  const auto connection = ConnectTo(server.ConnectionString());
  for (int i = 0; i < 200; ++i) {
    const ResultSetPtr found = connection->Execute(
        "select 1 as a from pg_stat_activity where state = 'active' and wait_event = 'PgSleep'",
        {});
    if (found->rows > 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
  }
  throw std::runtime_error("nothing sleeps");
}

std::unique_ptr<DatabaseConnection> ConnectTo(const std::string& connection_string) {
  return OdbcProvider()->Connect(connection_string);
}

}  // namespace vorek::odbc
