#ifndef VOREK_CATALOG_DATA_CONNECTION_H_
#define VOREK_CATALOG_DATA_CONNECTION_H_

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vorek/database.h"
#include "vorek/pass_watch.h"

namespace vorek {

using ProviderList = std::vector<std::shared_ptr<DatabaseProvider>>;

// The one that answers to the name. Throws Error(kConnection) if nobody does.
DatabaseProvider& FindProvider(const ProviderList& providers, const std::string& name);

// The connection whose statement runs now, or that one is being opened, so that it can be cancelled
// from another thread.
class RunningStatement {
 public:
  void Begin(DatabaseConnection& connection);
  void BeginConnect();
  void End();
  // No effect while nothing runs.
  void Cancel() noexcept;
  // False once the connect that is under way was cancelled.
  bool ConnectGoesOn() const;

  // The last error of a statement or a connect that was a lost connection or the end of its time.
  std::optional<Error>& Interruption() { return interruption_; }
  void Note(const Error& error) {
    const bool interrupted = error.Is(ErrorNumber::kConnection) || error.Is(ErrorNumber::kTimeout);
    if (interrupted) interruption_ = error;
  }

 private:
  mutable std::mutex mutex_;
  DatabaseConnection* connection_ = nullptr;
  bool connect_cancelled_ = false;
  std::optional<Error> interruption_;  // of the thread that runs statements
};

// The connections that stand, so that data objects with one string share one.
class OpenConnections {
 public:
  // Null if none stands.
  std::shared_ptr<DatabaseConnection> Find(const std::string& provider,
                                           const std::string& text) const;
  void Keep(const std::string& provider, const std::string& text,
            const std::shared_ptr<DatabaseConnection>& connection);
  // A connection that was lost isn't handed on.
  void Drop(const std::shared_ptr<DatabaseConnection>& connection);

 private:
  std::map<std::pair<std::string, std::string>, std::weak_ptr<DatabaseConnection>> connections_;
};

// The connection `cnn` of the data object: opened by the first statement, then kept.
class DataConnection {
 public:
  // All must outlive the connection.
  DataConnection(const ProviderList& providers, RunningStatement& running, OpenConnections& open)
      : providers_(providers), running_(running), open_(open) {}

  const std::string& Provider() const { return provider_; }
  const std::string& ConnectionString() const { return connection_string_; }
  void SetProvider(std::string name) { provider_ = std::move(name); }
  void SetConnectionString(std::string text) { connection_string_ = std::move(text); }

  // Connects if it isn't connected, unless a connection of that string stands. Throws
  // Error(kConnection) for a provider that nobody answers to, an empty string, or with the
  // provider's own reason; Error(kCancelled).
  void Open();
  void Close() { connection_.reset(); }
  bool IsOpen() const { return connection_ != nullptr; }

  // Drops a connection that doesn't answer any more, so that the next statement connects anew: a
  // statement that fails by it may have begun, and can't be run again.
  void DropDead();

  // Runs a text; see DatabaseConnection::Execute. A lost connection is dropped, so that a later
  // statement connects anew.
  ResultSetPtr Execute(std::string_view text, int timeout_seconds);
  // The same for DatabaseConnection::Describe.
  std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds);

  // The description of the last error of a statement or a connect; empty if the last one went
  // through.
  const std::string& LastError() const { return last_error_; }

  // Asked while rows are read; see ExecuteOptions::progress.
  std::function<bool(std::size_t rows)> on_progress;
  // Asked by those who go through many rows of a result; null for none.
  PassWatch* watch = nullptr;
  ResultLimits limits;  // of each statement

 private:
  // Opens the connection and does the work on it, noting how it went.
  template <typename Work>
  auto Attempt(const Work& work);

  const ProviderList& providers_;
  RunningStatement& running_;
  OpenConnections& open_;
  std::string provider_;
  std::string connection_string_;
  std::string last_error_;
  std::shared_ptr<DatabaseConnection> connection_;
};

}  // namespace vorek

#endif  // VOREK_CATALOG_DATA_CONNECTION_H_
