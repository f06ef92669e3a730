#include <sqlext.h>

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "adapters/odbc/connection.h"
#include "adapters/odbc/wide_text.h"
#include "vorek/database.h"
#include "vorek/odbc.h"

namespace vorek {
namespace {

class Provider final : public DatabaseProvider {
 public:
  bool Answers(std::string_view provider_name) const override {
    return odbc::IsSqlServerProvider(provider_name) || odbc::IsPassThroughProvider(provider_name);
  }

  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override {
    return ConnectWhile(connection_string, nullptr);
  }

  std::unique_ptr<DatabaseConnection> ConnectWhile(std::string_view connection_string,
                                                   const std::function<bool()>& goes_on) override {
    const std::shared_ptr<odbc::Environment> environment = OpenEnvironment();
    return std::make_unique<odbc::Connection>(
        environment, odbc::ToOdbc(connection_string, InstalledDrivers(environment->Get())),
        goes_on);
  }

 private:
  // One for all connections of the provider, made for the first.
  std::shared_ptr<odbc::Environment> OpenEnvironment() {
    const std::lock_guard lock(mutex_);
    if (environment_ == nullptr) {
      auto environment = std::make_shared<odbc::Environment>(nullptr);
      SQLSetEnvAttr(environment->Get(), SQL_ATTR_ODBC_VERSION, odbc::AttributeNumber(SQL_OV_ODBC3),
                    0);
      environment_ = std::move(environment);
    }
    return environment_;
  }

  static std::vector<std::string> InstalledDrivers(SQLHANDLE environment) {
    std::vector<std::string> names;
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDriversW(environment, direction, name.data(),
                                     static_cast<SQLSMALLINT>(name.size()), &length, nullptr, 0,
                                     nullptr))) {
      direction = SQL_FETCH_NEXT;
      names.emplace_back();
      odbc::AppendUtf8(name.data(), static_cast<std::size_t>(length), names.back());
    }
    return names;
  }

  std::mutex mutex_;
  std::shared_ptr<odbc::Environment> environment_;
};

}  // namespace

std::shared_ptr<DatabaseProvider> OdbcProvider() { return std::make_shared<Provider>(); }

}  // namespace vorek
