#ifndef VOREK_TESTS_ODBC_TDS_WIRE_H_
#define VOREK_TESTS_ODBC_TDS_WIRE_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "odbc/tds/column.h"
#include "odbc/tds/server.h"
#include "vorek/database.h"
#include "vorek/error.h"

// What the tests of the wire share.
namespace vorek::tds {

// A server in front of an embedded database of its own, in memory, one for each connection.
Backend InMemory();

// How a host names the server. pieces are further ones, as "Connect Timeout=2".
std::string StringFor(const Server& server, const std::string& pieces = "");
std::unique_ptr<DatabaseConnection> ConnectTo(const std::string& connection_string);

// Answers a batch by these columns and by what `fill` puts as rows: their count.
using Fill = std::function<std::size_t(const std::vector<Column>&, PacketStream&)>;
Answer RowsAnswer(std::vector<Column> columns, Fill fill);

inline std::vector<std::size_t> Sizes(std::vector<std::size_t> sizes) { return sizes; }

// The number and the words of the error that a piece of work ends with; 0 and "" if it ends well.
struct Failure {
  long number = 0;
  std::string words;
};
template <typename Work>
Failure FailureOf(const Work& work) {
  try {
    work();
  } catch (const Error& error) {
    return {error.Number(), error.Description()};
  }
  return {};
}

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_WIRE_H_
