#include "adapters/odbc/connection_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/error.h"

namespace vorek::odbc {
namespace {

using Pieces = std::vector<ConnectionPiece>;

bool IsFreeTds(std::string_view driver) {
  return text::ContainsIgnoreCase(driver, "FreeTDS") || text::ContainsIgnoreCase(driver, "tdsodbc");
}

bool IsTrue(std::string_view value) {
  static constexpr std::array<std::string_view, 5> kWords = {"yes", "true", "1", "sspi",
                                                             "mandatory"};
  return std::any_of(kWords.begin(), kWords.end(),
                     [&](std::string_view word) { return text::EqualsIgnoreCase(value, word); });
}

// Microsoft's newest driver, else FreeTDS. "ODBC Driver 18 for SQL Server" sorts behind 17.
std::string ChooseDriver(const std::vector<std::string>& installed) {
  std::string microsoft;
  std::string free_tds;
  for (const std::string& name : installed) {
    if (text::StartsWithIgnoreCase(name, "ODBC Driver ") &&
        text::EndsWithIgnoreCase(name, " for SQL Server")) {
      microsoft = std::max(microsoft, name);
    } else if (IsFreeTds(name)) {
      free_tds = name;
    }
  }
  if (!microsoft.empty()) return microsoft;
  if (!free_tds.empty()) return free_tds;
  throw Error(ErrorNumber::kConnection, "No ODBC driver for SQL Server is installed.");
}

// Letters that some driver takes for its own: PostgreSQL's reads "%41" and "+" outside of braces as
// an address of the web has them.
bool IsBare(std::string_view value) {
  return value.find_first_of("[]{}(),;?*=!@\"'%+") == std::string_view::npos && !value.empty() &&
         value.front() != ' ' && value.back() != ' ';
}

// Which letters stand for themselves, and what braces do, is every driver's own.
enum class Dialect { kStandard, kFreeTds, kPostgres };

Dialect DialectOf(std::string_view driver) {
  if (IsFreeTds(driver)) return Dialect::kFreeTds;
  const bool postgres = text::ContainsIgnoreCase(driver, "PostgreSQL") ||
                        text::ContainsIgnoreCase(driver, "psqlodbc");
  return postgres ? Dialect::kPostgres : Dialect::kStandard;
}

[[noreturn]] void Refuse(std::string_view driver, std::string_view what, std::string_view key) {
  throw Error(ErrorNumber::kConnection, std::string(driver) + " takes no \"" + std::string(what) +
                                            "\" within a value: " + std::string(key) + ".");
}

// FreeTDS reads up to the first "};", and a doubled brace as two.
std::string QuoteForFreeTds(std::string_view key, std::string_view value) {
  if (IsBare(value)) return std::string(value);
  if (text::Contains(value, "};")) Refuse("FreeTDS", "};", key);
  return "{" + std::string(value) + "}";
}

// PostgreSQL's driver knows braces around a password alone.
std::string QuoteForPostgres(std::string_view key, std::string_view value) {
  if (text::EqualsIgnoreCase(key, "PWD")) return QuoteOdbc(value);
  if (text::Contains(value, ";")) Refuse("PostgreSQL's driver", ";", key);
  const bool open = value.starts_with('{') && !text::Contains(value, "}");
  if (open) Refuse("PostgreSQL's driver", "{", key);
  return std::string(value);
}

class Builder {
 public:
  explicit Builder(Dialect dialect) : dialect_(dialect) {}

  void Add(std::string_view key, std::string_view value) {
    if (value.empty()) return;
    const bool driver = text::EqualsIgnoreCase(key, "DRIVER");  // the driver manager reads it
    text_ += std::string(key) + "=" + (driver ? QuoteOdbc(value) : Quoted(key, value)) + ";";
  }
  std::string Take() { return std::move(text_); }

 private:
  std::string Quoted(std::string_view key, std::string_view value) const {
    switch (dialect_) {
      case Dialect::kFreeTds:
        return QuoteForFreeTds(key, value);
      case Dialect::kPostgres:
        return QuoteForPostgres(key, value);
      case Dialect::kStandard:
        break;
    }
    return QuoteOdbc(value);
  }

  Dialect dialect_;
  std::string text_;
};

// A server as "host", "host,port" or "host\instance", perhaps with its protocol in front.
struct Server {
  std::string host;
  std::string port;
};

Server SplitServer(std::string name) {
  if (text::StartsWithIgnoreCase(name, "tcp:")) name.erase(0, 4);
  if (name == "." || text::EqualsIgnoreCase(name, "(local)")) name = "localhost";
  const std::size_t comma = name.find(',');
  if (comma == std::string::npos) return {name, {}};
  return {text::Trim(name.substr(0, comma)), text::Trim(name.substr(comma + 1))};
}

void AddFreeTds(const Pieces& pieces, const Server& server, Builder& odbc) {
  if (IsTrue(ConnectionValue(pieces, {"Integrated Security", "Trusted_Connection"}))) {
    throw Error(ErrorNumber::kConnection,
                "Integrated security needs Microsoft's ODBC driver; FreeTDS takes a user and a "
                "password.");
  }
  odbc.Add("SERVER", server.host);
  // With an instance the browser service of the server gives the port.
  if (server.port.empty() && server.host.find('\\') == std::string::npos) {
    odbc.Add("PORT", "1433");
  } else {
    odbc.Add("PORT", server.port);
  }
  odbc.Add("TDS_Version", "7.4");
  odbc.Add("ClientCharset", "UTF-8");
  const std::string encrypt = ConnectionValue(pieces, {"Use Encryption for Data", "Encrypt"});
  if (IsTrue(encrypt) || text::EqualsIgnoreCase(encrypt, "strict")) {
    odbc.Add("Encryption", "require");
  }
}

void AddMicrosoft(const Pieces& pieces, const Server& server, Builder& odbc) {
  odbc.Add("SERVER", server.port.empty() ? server.host : server.host + "," + server.port);
  if (IsTrue(ConnectionValue(pieces, {"Integrated Security", "Trusted_Connection"}))) {
    odbc.Add("Trusted_Connection", "yes");
  }
  const std::string encrypt = ConnectionValue(pieces, {"Use Encryption for Data", "Encrypt"});
  if (text::EqualsIgnoreCase(encrypt, "strict")) {
    odbc.Add("Encrypt", "strict");
  } else if (!encrypt.empty()) {
    odbc.Add("Encrypt", IsTrue(encrypt) ? "yes" : "no");
  } else {
    // The providers that hosts name don't ask for encryption; the newer drivers would.
    odbc.Add("Encrypt", "no");
  }
  if (IsTrue(ConnectionValue(pieces, {"Trust Server Certificate", "TrustServerCertificate"}))) {
    odbc.Add("TrustServerCertificate", "yes");
  }
}

std::string SqlServerText(const Pieces& pieces, const std::vector<std::string>& installed) {
  const std::string named = ConnectionValue(pieces, {"Driver"});
  const std::string driver = named.empty() ? ChooseDriver(installed) : named;
  const Server server = SplitServer(
      ConnectionValue(pieces, {"Data Source", "Server", "Address", "Addr", "Network Address"}));
  Builder odbc(DialectOf(driver));
  odbc.Add("DRIVER", driver);
  IsFreeTds(driver) ? AddFreeTds(pieces, server, odbc) : AddMicrosoft(pieces, server, odbc);
  odbc.Add("DATABASE", ConnectionValue(pieces, {"Initial Catalog", "Database"}));
  odbc.Add("UID", ConnectionValue(pieces, {"User ID", "UID", "User"}));
  odbc.Add("PWD", ConnectionValue(pieces, {"Password", "PWD"}));
  odbc.Add("APP", ConnectionValue(pieces, {"Application Name", "APP"}));
  odbc.Add("WSID", ConnectionValue(pieces, {"Workstation ID", "WSID"}));
  return odbc.Take();
}

// The names that a string for any driver may use beside the driver's own, and what ODBC calls them.
std::string_view OdbcName(std::string_view key) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kNames = {
      {{"Data Source", "DSN"},
       {"User ID", "UID"},
       {"Password", "PWD"},
       {"Initial Catalog", "DATABASE"}}};
  for (const auto& [ole, odbc] : kNames) {
    if (text::EqualsIgnoreCase(key, ole)) return odbc;
  }
  return key;
}

std::string PassThroughText(const Pieces& pieces) {
  static constexpr std::array<std::string_view, 5> kNotOdbc = {
      "Provider", "Persist Security Info", "Connect Timeout", "Connection Timeout", "Mode"};
  Builder odbc(DialectOf(ConnectionValue(pieces, {"Driver"})));
  for (const ConnectionPiece& piece : pieces) {
    const bool skipped = std::any_of(kNotOdbc.begin(), kNotOdbc.end(), [&](std::string_view name) {
      return text::EqualsIgnoreCase(piece.key, name);
    });
    if (skipped || text::EqualsIgnoreCase(piece.key, "Extended Properties")) continue;
    odbc.Add(OdbcName(piece.key), piece.value);
  }
  // A whole ODBC string in one piece.
  return odbc.Take() + ConnectionValue(pieces, {"Extended Properties"});
}

// Its length is handed over in a small whole number; what is behind would be left out.
void CheckLength(const std::string& odbc) {
  constexpr std::size_t kMost = 32767;
  if (odbc.size() <= kMost) return;  // a unit takes a byte at least
  throw Error(ErrorNumber::kConnection, "The connection string is longer than a driver takes: " +
                                            std::to_string(odbc.size()) + " bytes, " +
                                            std::to_string(kMost) + " at most.");
}

}  // namespace

bool IsSqlServerProvider(std::string_view provider) {
  static constexpr std::array<std::string_view, 3> kNames = {"SQLOLEDB", "MSOLEDBSQL", "SQLNCLI"};
  return std::any_of(kNames.begin(), kNames.end(), [&](std::string_view name) {
    if (!text::StartsWithIgnoreCase(provider, name)) return false;
    return provider.find_first_not_of("0123456789.", name.size()) == std::string_view::npos;
  });
}

bool IsPassThroughProvider(std::string_view provider) {
  return text::EqualsIgnoreCase(provider, "MSDASQL") ||
         text::EqualsIgnoreCase(provider, "MSDASQL.1");
}

std::string QuoteOdbc(std::string_view value) {
  if (IsBare(value)) return std::string(value);
  return "{" + text::Replace(value, "}", "}}") + "}";
}

ConnectionText ToOdbc(std::string_view connection_string,
                      const std::vector<std::string>& installed) {
  const Pieces pieces = ParseConnectionString(connection_string);
  ConnectionText result;
  result.odbc = IsPassThroughProvider(ConnectionValue(pieces, {"Provider"}))
                    ? PassThroughText(pieces)
                    : SqlServerText(pieces, installed);
  CheckLength(result.odbc);
  result.password = ConnectionValue(pieces, {"Password", "PWD"});
  if (result.password.empty()) {
    const std::string whole = ConnectionValue(pieces, {"Extended Properties"});
    result.password = ConnectionValue(ParseConnectionString(whole), {"PWD", "Password"});
  }
  const std::string seconds = ConnectionValue(pieces, {"Connect Timeout", "Connection Timeout"});
  if (!seconds.empty())
    result.login_seconds = std::max(0, text::ToInt32(text::NumericPrefix(seconds)));
  return result;
}

}  // namespace vorek::odbc
