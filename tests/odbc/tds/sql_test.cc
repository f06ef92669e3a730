// All cases of the dialect, with their values, types and errors, over the wire.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "odbc/tds/wire.h"
#include "sql/sql_cases.h"

namespace vorek::tds {
namespace {

TEST(SqlTest, GivesWhatTheEmbeddedDatabaseGives) {
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator("tests/sql")) {
    if (entry.path().extension() != ".test") continue;
    Server server(InMemory());
    const auto connection = ConnectTo(StringFor(server));
    for (const std::string& difference :
         DifferingCases(*connection, entry.path(), SqlServer::kEmbedded)) {
      ADD_FAILURE() << difference;
    }
    ++files;
  }
  EXPECT_GT(files, 10u);
}

}  // namespace
}  // namespace vorek::tds
