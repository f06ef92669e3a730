// Bytes that make two small tables and a query over them: what the embedded database gives has to
// be what plain loops over the rows give.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "../tests/sql/row_query.h"
#include "vorek/database.h"
#include "vorek/sqlite.h"

namespace {

std::string Rows(const vorek::ResultSet& result) {
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < result.rows; ++row) {
    std::string text;
    for (const vorek::ResultColumn& column : result.columns) {
      text += (text.empty() ? "" : "|") + (column.IsNull(row) ? "NULL" : column.Display(row));
    }
    rows.push_back(std::move(text));
  }
  std::sort(rows.begin(), rows.end());
  std::string all;
  for (const std::string& row : rows) all += row + "\n";
  return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vorek::RowQuery query(std::vector<std::uint8_t>(data, data + size));
  std::string wanted;
  for (const std::string& row : query.Rows()) wanted += row + "\n";
  std::string given;
  try {
    const auto connection =
        vorek::SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    if (const std::string setup = query.Setup(); !setup.empty()) connection->Execute(setup, {});
    given = Rows(*connection->Execute(query.Query(), {}));
  } catch (const vorek::Error& error) {
    given = error.Description();
  }
  if (given == wanted) return 0;
  std::fprintf(stderr, "%s%s\nwanted:\n%sgave:\n%s\n", query.Setup().c_str(), query.Query().c_str(),
               wanted.c_str(), given.c_str());
  std::abort();
}
