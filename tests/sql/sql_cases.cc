#include "sql_cases.h"

#include <fstream>
#include <memory>
#include <sstream>

#include "vorek/script.h"

namespace vorek {
namespace {

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

std::string Outcome(DatabaseConnection& connection, const SqlCase& test) {
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

constexpr std::string_view kError = "error: ";

bool IsError(const std::string& outcome) { return outcome.rfind(kError, 0) == 0; }

// True if only the embedded database ends so: it tells what it doesn't translate.
bool IsRefusal(const SqlCase& test) {
  return IsError(test.expected) && test.expected.find("supported") != std::string::npos;
}

bool Fits(const SqlCase& test, const std::string& outcome, SqlServer server) {
  if (!IsError(test.expected)) return outcome == test.expected;
  const std::string piece =
      test.expected.substr(kError.size(), test.expected.size() - kError.size() - 1);
  return IsError(outcome) &&
         (server == SqlServer::kOther || outcome.find(piece) != std::string::npos);
}

// A case as written, or one for each of its lines.
void AddCases(const SqlCase& written, bool each, std::vector<SqlCase>& cases) {
  if (written.statement.empty()) return;
  if (!each) {
    cases.push_back(written);
    return;
  }
  SqlCase one = written;
  std::istringstream lines(written.statement);
  for (std::string line; std::getline(lines, line); ++one.line) {
    one.statement = line + "\n";
    cases.push_back(one);
  }
}

// A case that stands on one line.
bool AddShortCase(const std::string& line, SqlCase current, int number,
                  std::vector<SqlCase>& cases) {
  constexpr std::string_view kBetween = " ---- ";
  const std::size_t between = line.rfind(kBetween);
  if (between == std::string::npos) return false;
  current.line = number;
  current.statement = line.substr(0, between) + "\n";
  current.expected = line.substr(between + kBetween.size()) + "\n";
  cases.push_back(std::move(current));
  return true;
}

}  // namespace

std::vector<SqlCase> ReadSqlCases(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::vector<SqlCase> cases;
  SqlCase current;
  bool in_expected = false;
  bool types = false;
  std::string line;
  bool each = false;
  const auto finish = [&] {
    current.types = types;
    AddCases(current, each, cases);
    current = SqlCase{};
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
    } else if (!in_expected && (line == "----" || line == "---- each")) {
      in_expected = true;
      each = line != "----";
    } else if (in_expected) {
      current.expected += line + "\n";
    } else if (current.statement.empty() && AddShortCase(line, current, number, cases)) {
      continue;
    } else if (!line.empty() || !current.statement.empty()) {
      if (current.statement.empty()) current.line = number;
      current.statement += line + "\n";
    } else {
      current.name.clear();
    }
  }
  finish();
  return cases;
}

std::vector<std::string> DifferingCases(DatabaseConnection& connection,
                                        const std::filesystem::path& path, SqlServer server) {
  std::vector<std::string> differing;
  for (const SqlCase& test : ReadSqlCases(path)) {
    if (server == SqlServer::kOther && IsRefusal(test)) continue;
    const std::string outcome = Outcome(connection, test);
    if (Fits(test, outcome, server)) continue;
    differing.push_back(path.filename().string() + " line " + std::to_string(test.line) + " " +
                        test.name + "\n" + test.statement + "wanted:\n" + test.expected +
                        "gave:\n" + outcome);
  }
  return differing;
}

}  // namespace vorek
