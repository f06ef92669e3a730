// Runs the text files of this folder. A file is a list of cases:
//
//   # name of the case, and what it shows
//   statements in the dialect, one or more lines
//   ----
//   the rows as expected: a line a row, values between "|", NULL for NULL, after a line of the
//   columns as "name:type"; or "error: a piece of the message"; or "ok" for no rows
//
// VOREK_SQL_CASES names another folder of such files, to be run beside these. Cases are parted by
// an empty line. All cases of a file run in order on one fresh database. A first line "!types"
// makes the columns' line part of the expectation from there on, "!notypes" ends that.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/script.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

struct Case {
  int line = 0;
  std::string name;
  std::string statement;
  std::string expected;
  bool types = false;
};

std::vector<Case> ReadCases(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::vector<Case> cases;
  Case current;
  bool in_expected = false;
  bool types = false;
  std::string line;
  const auto finish = [&] {
    if (!current.statement.empty()) {
      current.types = types;
      cases.push_back(current);
    }
    current = Case{};
    in_expected = false;
  };
  for (int number = 1; std::getline(file, line); ++number) {
    if (line == "!types" || line == "!notypes") {
      finish();
      types = line == "!types";
    } else if (in_expected && line.empty()) {
      finish();
    } else if (!in_expected && line.rfind("# ", 0) == 0 && current.statement.empty()) {
      current.name = line.substr(2);
    } else if (!in_expected && line == "----") {
      in_expected = true;
    } else if (in_expected) {
      current.expected += line + "\n";
    } else if (!line.empty() || !current.statement.empty()) {
      if (current.statement.empty()) current.line = number;
      current.statement += line + "\n";
    }
  }
  finish();
  return cases;
}

std::string Written(const ResultSet& result, bool types) {
  std::string out;
  if (types) {
    for (const ResultColumn& column : result.columns) {
      out += (out.empty() ? "" : "|") + column.Name() + ":" + std::to_string(column.AdoType());
    }
    out += "\n";
  }
  for (std::size_t row = 0; row < result.rows; ++row) {
    bool first = true;
    for (const ResultColumn& column : result.columns) {
      if (!first) out += "|";
      first = false;
      out += column.IsNull(row) ? "NULL" : column.Display(row);
    }
    out += "\n";
  }
  return out;
}

std::string Outcome(DatabaseConnection& connection, const Case& test) {
  try {
    ResultSetPtr result;
    ExecuteOptions options;
    for (const ScriptBatch& batch : SplitScript(test.statement)) {
      ResultSetPtr rows = connection.Execute(batch.text, options);
      if (result == nullptr) result = std::move(rows);
    }
    return result == nullptr ? "ok\n" : Written(*result, test.types);
  } catch (const Error& error) {
    return "error: " + error.Description() + "\n";
  }
}

class SqlFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SqlFile, GivesWhatItSays) {
  const std::vector<Case> cases = ReadCases(GetParam());
  ASSERT_FALSE(cases.empty());
  const auto connection =
      SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
  for (const Case& test : cases) {
    const std::string outcome = Outcome(*connection, test);
    const bool wants_error = test.expected.rfind("error: ", 0) == 0;
    if (wants_error) {
      const std::string piece = test.expected.substr(7, test.expected.size() - 8);
      const bool fits =
          outcome.rfind("error: ", 0) == 0 && outcome.find(piece) != std::string::npos;
      EXPECT_TRUE(fits) << GetParam().filename() << " line " << test.line << " " << test.name
                        << "\n"
                        << test.statement << "wanted an error with: " << piece
                        << "\ngave: " << outcome;
    } else {
      EXPECT_EQ(outcome, test.expected)
          << GetParam().filename() << " line " << test.line << " " << test.name << "\n"
          << test.statement;
    }
  }
}

std::vector<std::filesystem::path> Files() {
  std::vector<std::filesystem::path> files;
  const char* const more = std::getenv("VOREK_SQL_CASES");
  for (const std::string folder : {VOREK_SQL_TESTS, more == nullptr ? "" : more}) {
    if (folder.empty()) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".test") files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string NameOf(const testing::TestParamInfo<std::filesystem::path>& file) {
  const bool own = file.param.parent_path() == VOREK_SQL_TESTS;
  std::string name = (own ? "" : "more_") + file.param.stem().string();
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SqlFile, testing::ValuesIn(Files()), NameOf);

}  // namespace
}  // namespace vorek
