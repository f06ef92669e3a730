#ifndef VOREK_ADAPTERS_ODBC_CONNECTION_H_
#define VOREK_ADAPTERS_ODBC_CONNECTION_H_

#include <sql.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/odbc/connection_text.h"
#include "adapters/odbc/handle.h"
#include "adapters/odbc/row_reader.h"
#include "adapters/odbc/watchdog.h"
#include "platform/database.h"

namespace vorek::odbc {

class Connection final : public DatabaseConnection {
 public:
  Connection(std::shared_ptr<Environment> environment, const ConnectionText& text);
  ~Connection() override;

  ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override;
  void Cancel() noexcept override;

 private:
  // Why a statement was told to stop.
  enum class Stop { kNone, kCancelled, kTimeout };

  // A statement while it runs: known to Cancel, and to the watchdog while it has a time-out.
  class Running {
   public:
    Running(Connection& connection, SQLHANDLE statement, int timeout_seconds);
    ~Running();

   private:
    Connection& connection_;
  };

  void Connect(const ConnectionText& text);
  void ReadTraits();
  bool KnowsUnicode();
  SQLRETURN ExecuteDirect(SQLHANDLE statement, std::string_view text);
  void StopNow(Stop reason) noexcept;
  void ThrowIfStopped() const;
  bool IsOverdue() const;
  [[noreturn]] void Fail(SQLHANDLE statement) const;
  ResultSetPtr ReadFirstRows(SQLHANDLE statement, const ExecuteOptions& options);
  void FinishRest(SQLHANDLE statement);

  std::shared_ptr<Environment> environment_;
  ConnectionHandle handle_;
  DriverTraits traits_;
  std::mutex running_mutex_;
  SQLHANDLE running_ = SQL_NULL_HANDLE;
  std::atomic<Stop> stop_{Stop::kNone};
  std::optional<std::chrono::steady_clock::time_point> deadline_;  // of the running statement
  Watchdog watchdog_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_CONNECTION_H_
