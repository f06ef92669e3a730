#include "adapters/system/database_option.h"

#include "adapters/system/settings_folder.h"
#include "adapters/system/system_files.h"
#include "platform/connection_secrets.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"

namespace vorek {
namespace {

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

bool IsConnectionString(const std::string& database) {
  return text::StartsWithIgnoreCase(text::TrimView(database), "Provider=");
}

std::string ConnectionStringOf(const std::string& database) {
  if (IsConnectionString(database)) return text::Trim(database);
  return FormatConnectionString({{"Provider", "VorekSQLite"}, {"Data Source", database}});
}

std::string PasswordGiven(const std::string& password_file) {
  if (password_file.empty()) return EnvironmentText("VOREK_PASSWORD");
  return FirstLine(SystemFiles().Read(password_file));
}

std::string DatabaseOption(const std::string& database, const std::string& password_file) {
  return WithPassword(ConnectionStringOf(database), PasswordGiven(password_file));
}

}  // namespace vorek
