#include "csv_provider.h"

#include <vorek/connection_string.h>
#include <vorek/error.h>
#include <vorek/script.h>
#include <vorek/sqlite.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Row = std::vector<std::string>;

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw vorek::Error(vorek::ErrorNumber::kFileNotFound, path + " can't be read");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Cells parted by commas, rows by line ends; a cell in quotes may hold both, and quotes doubled.
std::vector<Row> ParseCsv(const std::string& text) {
  std::vector<Row> rows(1, Row(1));
  bool quoted = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '"' && quoted && at + 1 < text.size() && text[at + 1] == '"') {
      rows.back().back() += text[++at];
    } else if (c == '"') {
      quoted = !quoted;
    } else if (quoted || (c != ',' && c != '\n' && c != '\r')) {
      rows.back().back() += c;
    } else if (c == ',') {
      rows.back().emplace_back();
    } else if (c == '\n') {
      rows.emplace_back(1);
    }
  }
  if (rows.back() == Row(1)) rows.pop_back();
  return rows;
}

std::string Quoted(const std::string& text) {
  if (text.empty()) return "null";
  std::string out = "N'";
  for (const char c : text) out += c == '\'' ? "''" : std::string(1, c);
  return out + "'";
}

bool IsNumber(const std::string& text) {
  return !text.empty() && text.size() < 15 &&
         text.find_first_not_of("0123456789") == std::string::npos;
}

// A column is one of whole numbers if each of its cells is.
std::string TypeOf(const std::vector<Row>& rows, std::size_t column) {
  const bool numbers = std::all_of(rows.begin() + 1, rows.end(), [&](const Row& row) {
    return column < row.size() && IsNumber(row[column]);
  });
  return numbers ? "bigint" : "nvarchar(400)";
}

std::string Names(const Row& header) {
  std::string names;
  for (const std::string& name : header) names += (names.empty() ? "[" : ", [") + name + "]";
  return names;
}

void Load(vorek::DatabaseConnection& connection, const std::filesystem::path& file) {
  const std::vector<Row> rows = ParseCsv(ReadAll(file.string()));
  const std::string table = file.stem().string();
  std::string columns;
  for (std::size_t i = 0; i < rows[0].size(); ++i) {
    columns += (i > 0 ? ", [" : "[") + rows[0][i] + "] " + TypeOf(rows, i);
  }
  std::string script =
      "if object_id('" + table + "') is null create table [" + table + "] (" + columns + ")\n";
  for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
    script += "insert into [" + table + "] (" + Names(rows[0]) + ") values (";
    for (std::size_t i = 0; i < row->size(); ++i) script += (i > 0 ? ", " : "") + Quoted((*row)[i]);
    script += ")\n";
  }
  vorek::RunScript(connection, script, {});
}

class CsvFolder : public vorek::DatabaseProvider {
 public:
  bool Answers(std::string_view name) const override { return name == "CsvFolder"; }

  std::unique_ptr<vorek::DatabaseConnection> Connect(std::string_view text) override {
    const auto settings = vorek::ParseConnectionString(text);
    auto connection =
        vorek::SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:;");
    vorek::RunScript(*connection, ReadAll(vorek::ConnectionValue(settings, {"Catalogue"})), {});
    const std::string folder = vorek::ConnectionValue(settings, {"Folder"});
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".csv") Load(*connection, entry.path());
    }
    return connection;
  }
};

}  // namespace

std::shared_ptr<vorek::DatabaseProvider> CsvFolderProvider() {
  return std::make_shared<CsvFolder>();
}
