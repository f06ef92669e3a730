#ifndef VOREK_TESTS_ODBC_POSTGRES_SERVER_H_
#define VOREK_TESTS_ODBC_POSTGRES_SERVER_H_

#include <memory>
#include <string>

#include "vorek/database.h"

namespace vorek::odbc {

// A PostgreSQL server of the test program's own, in a temporary folder; gone with the object.
class PostgresServer {
 public:
  PostgresServer();
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  // Without a word to its clients, as when the machine loses its power.
  void Kill() { Run("kill"); }
  void Start() { Run("start"); }

  // Answers nothing between these, as when the network is gone.
  void Freeze() { Run("freeze"); }
  void Thaw() { Run("thaw"); }

  std::string ConnectionString() const;

 private:
  void Run(const std::string& command) const;

  std::string folder_;
};

// Made for the first test that asks, started again if a test killed it.
PostgresServer& SharedPostgres();

// Returns once the server runs a statement that sleeps; gives up after some seconds.
void WaitUntilSleeping(const PostgresServer& server);

std::unique_ptr<DatabaseConnection> ConnectTo(const std::string& connection_string);

}  // namespace vorek::odbc

#endif  // VOREK_TESTS_ODBC_POSTGRES_SERVER_H_
