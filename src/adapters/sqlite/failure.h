#ifndef VOREK_ADAPTERS_SQLITE_FAILURE_H_
#define VOREK_ADAPTERS_SQLITE_FAILURE_H_

#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/cell.h"

namespace vorek::sqlite {

// An error as a text of the dialect sees it by @@ERROR and in a CATCH block.
struct Failure {
  int number = 0;  // the server's, 50000 for a text of one's own
  int severity = 16;
  int state = 1;
  int line = 0;
  bool ends_batch = false;  // THROW
  std::string message;
  std::string procedure;  // that it happened in, or empty
};

// The server's number for an error's description.
int ServerNumber(std::string_view message);
// True for an error that ends its statement and no more: the texts behind it still run.
bool EndsStatementOnly(int number);
// RAISERROR's text with its %s, %d, %i, %u, %x, %X, %o and %% filled in.
std::string FormatMessage(std::string_view pattern, const std::vector<Cell>& values);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_FAILURE_H_
