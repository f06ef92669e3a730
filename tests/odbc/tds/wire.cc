#include "odbc/tds/wire.h"

#include <utility>

#include "odbc/tds/tokens.h"
#include "vorek/odbc.h"
#include "vorek/sqlite.h"

namespace vorek::tds {

Backend InMemory() { return {SqliteProvider(), "Provider=VorekSQLite;Data Source=:memory:"}; }

std::string StringFor(const Server& server, const std::string& pieces) {
  return "Provider=SQLOLEDB;Driver=FreeTDS;Data Source=127.0.0.1," + std::to_string(server.Port()) +
         ";Initial Catalog=books;User ID=vorek;Password=s3cret;" + pieces;
}

std::unique_ptr<DatabaseConnection> ConnectTo(const std::string& connection_string) {
  return OdbcProvider()->Connect(connection_string);
}

Answer RowsAnswer(std::vector<Column> columns, Fill fill) {
  return [columns = std::move(columns), fill = std::move(fill)](PacketStream& out) {
    out.Put(ColumnsToken(columns));
    out.Put(DoneToken(kDoneCount, fill(columns, out)));
    out.End();
  };
}

}  // namespace vorek::tds
