#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "adapters/sqlite/connection.h"
#include "platform/database.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// The value of a piece "key=value" of a connection string; quotes round it are taken off.
std::string PieceOf(std::string_view connection_string, std::string_view key) {
  while (!connection_string.empty()) {
    const std::size_t end = connection_string.find(';');
    const std::string_view piece = connection_string.substr(0, end);
    connection_string.remove_prefix(end == std::string_view::npos ? connection_string.size()
                                                                  : end + 1);
    const std::size_t equals = piece.find('=');
    if (equals == std::string_view::npos) continue;
    if (!text::EqualsIgnoreCase(text::TrimView(piece.substr(0, equals)), key)) continue;
    std::string_view value = text::TrimView(piece.substr(equals + 1));
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.front() == value.back();
    if (quoted) value = value.substr(1, value.size() - 2);
    return std::string(value);
  }
  return {};
}

sqlite::OpenMode ModeOf(const std::string& word) {
  if (word.empty() || text::EqualsIgnoreCase(word, "ReadWrite")) {
    return sqlite::OpenMode::kReadWrite;
  }
  if (text::EqualsIgnoreCase(word, "ReadOnly") || text::EqualsIgnoreCase(word, "Read")) {
    return sqlite::OpenMode::kReadOnly;
  }
  if (text::EqualsIgnoreCase(word, "Create")) return sqlite::OpenMode::kCreate;
  throw Error(ErrorNumber::kConnection,
              "Mode=" + word + " isn't one of ReadWrite, ReadOnly and Create.");
}

class Provider : public DatabaseProvider {
 public:
  bool Answers(std::string_view provider_name) const override {
    return text::EqualsIgnoreCase(provider_name, "VorekSQLite");
  }

  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override {
    const std::string path = PieceOf(connection_string, "Data Source");
    if (path.empty()) {
      throw Error(ErrorNumber::kConnection,
                  "The connection string names no file: Data Source=<file> is missing.");
    }
    const sqlite::OpenMode mode = ModeOf(PieceOf(connection_string, "Mode"));
    std::error_code error;
    const bool exists = std::filesystem::exists(path, error);
    if (!exists && path != ":memory:" && mode != sqlite::OpenMode::kCreate) {
      throw Error(ErrorNumber::kConnection,
                  "Cannot open the database '" + path + "': the file doesn't exist.");
    }
    return std::make_unique<sqlite::Connection>(path, mode);
  }
};

}  // namespace

std::shared_ptr<DatabaseProvider> SqliteProvider() { return std::make_shared<Provider>(); }

}  // namespace vorek
