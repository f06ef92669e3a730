#ifndef VOREK_ADAPTERS_ODBC_CONNECTION_H_
#define VOREK_ADAPTERS_ODBC_CONNECTION_H_

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "adapters/odbc/session.h"
#include "adapters/odbc/worker.h"
#include "vorek/database.h"

namespace vorek::odbc {

// A session whose calls end: one that the server doesn't answer within the time-out, or some
// seconds after a cancel, is given up as lost.
class Connection final : public DatabaseConnection {
 public:
  // Throws Error(kCancelled) once goes_on says no, if there is one.
  Connection(std::shared_ptr<Environment> environment, const ConnectionText& text,
             const std::function<bool()>& goes_on);

  ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override;
  std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds) override;
  void Cancel() noexcept override;
  bool IsAlive() override;

 private:
  // Has the worker do it within the time, or gives the connection up as lost.
  void Await(std::function<void()> work, int timeout_seconds,
             const std::function<bool(std::size_t)>& progress);

  std::shared_ptr<Session> session_;
  std::atomic<bool> lost_{false};
  Worker worker_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_CONNECTION_H_
