#include <charconv>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "adapters/sqlite/connection.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

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

// Seconds that the opening waits for a file which another one holds.
std::chrono::seconds PatienceOf(const std::string& word) {
  if (word.empty()) return std::chrono::seconds(30);
  int seconds = 0;
  const auto read = std::from_chars(word.data(), word.data() + word.size(), seconds);
  const bool whole = read.ec == std::errc() && read.ptr == word.data() + word.size();
  if (whole && seconds > 0) return std::chrono::seconds(seconds);
  throw Error(ErrorNumber::kConnection, "Connect Timeout=" + word + " isn't a number of seconds.");
}

class Provider : public DatabaseProvider {
 public:
  bool Answers(std::string_view provider_name) const override {
    return text::EqualsIgnoreCase(provider_name, "VorekSQLite");
  }

  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override {
    const std::vector<ConnectionPiece> pieces = ParseConnectionString(connection_string);
    const std::string path = ConnectionValue(pieces, {"Data Source"});
    if (path.empty()) {
      throw Error(ErrorNumber::kConnection,
                  "The connection string names no file: Data Source=<file> is missing.");
    }
    const sqlite::OpenMode mode = ModeOf(ConnectionValue(pieces, {"Mode"}));
    std::error_code error;
    const bool exists = std::filesystem::exists(path, error);
    if (!exists && path != ":memory:" && mode != sqlite::OpenMode::kCreate) {
      throw Error(ErrorNumber::kConnection,
                  "Cannot open the database '" + path + "': the file doesn't exist.");
    }
    return std::make_unique<sqlite::Connection>(
        path, mode, PatienceOf(ConnectionValue(pieces, {"Connect Timeout"})));
  }
};

}  // namespace

std::shared_ptr<DatabaseProvider> SqliteProvider() { return std::make_shared<Provider>(); }

}  // namespace vorek
