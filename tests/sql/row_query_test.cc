// Generated queries over two small tables against a plain evaluation: joins, NULLs, padded texts,
// decimals beyond 63 bits. fuzz_sql_rows looks further.
#include "row_query.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "vorek/database.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

std::vector<std::string> Sorted(const ResultSet& result) {
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < result.rows; ++row) {
    std::string text;
    for (const ResultColumn& column : result.columns) {
      text += (text.empty() ? "" : "|") + (column.IsNull(row) ? "NULL" : column.Display(row));
    }
    rows.push_back(std::move(text));
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

TEST(RowQueryTest, GivesWhatPlainLoopsGive) {
  std::mt19937 random(1404);
  for (int i = 0; i < 3000; ++i) {
    std::vector<std::uint8_t> bytes(400);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    const RowQuery query(bytes);
    const auto connection =
        SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    connection->Execute(query.Setup(), {});
    try {
      EXPECT_EQ(Sorted(*connection->Execute(query.Query(), {})), query.Rows())
          << query.Setup() << query.Query();
    } catch (const Error& error) {
      ADD_FAILURE() << error.Description() << "\n" << query.Setup() << query.Query();
    }
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace vorek
