#include "catalog/data_connection.h"

namespace vorek {
namespace {

// Ends the statement or the connect however the work on it ends.
struct UntilReturn {
  RunningStatement& statement;
  ~UntilReturn() { statement.End(); }
};

}  // namespace

void RunningStatement::Begin(DatabaseConnection& connection) {
  const std::lock_guard lock(mutex_);
  connection_ = &connection;
}

void RunningStatement::BeginConnect() {
  const std::lock_guard lock(mutex_);
  connect_cancelled_ = false;
}

bool RunningStatement::ConnectGoesOn() const {
  const std::lock_guard lock(mutex_);
  return !connect_cancelled_;
}

void RunningStatement::End() {
  const std::lock_guard lock(mutex_);
  connection_ = nullptr;
}

void RunningStatement::Cancel() noexcept {
  const std::lock_guard lock(mutex_);
  connect_cancelled_ = true;
  if (connection_ != nullptr) connection_->Cancel();
}

std::shared_ptr<DatabaseConnection> OpenConnections::Find(const std::string& provider,
                                                          const std::string& text) const {
  const auto found = connections_.find({provider, text});
  return found == connections_.end() ? nullptr : found->second.lock();
}

void OpenConnections::Keep(const std::string& provider, const std::string& text,
                           const std::shared_ptr<DatabaseConnection>& connection) {
  connections_[{provider, text}] = connection;
}

void OpenConnections::Drop(const std::shared_ptr<DatabaseConnection>& connection) {
  std::erase_if(connections_, [&](const auto& entry) { return entry.second.lock() == connection; });
}

DatabaseProvider& FindProvider(const ProviderList& providers, const std::string& name) {
  for (const std::shared_ptr<DatabaseProvider>& provider : providers) {
    if (provider->Answers(name)) return *provider;
  }
  if (name.empty()) {
    throw Error(ErrorNumber::kConnection, "No connection string has been set.");
  }
  throw Error(ErrorNumber::kConnection, "Provider '" + name + "' cannot be found.");
}

void DataConnection::Open() {
  if (connection_ != nullptr) return;
  connection_ = open_.Find(provider_, connection_string_);
  if (connection_ != nullptr) return;
  try {
    running_.BeginConnect();
    const UntilReturn until_return{running_};
    connection_ = FindProvider(providers_, provider_).ConnectWhile(connection_string_, [this] {
      return running_.ConnectGoesOn();
    });
    open_.Keep(provider_, connection_string_, connection_);
  } catch (const Error& error) {
    last_error_ = error.Description();
    running_.Note(error);
    throw;
  }
}

template <typename Work>
auto DataConnection::Attempt(const Work& work) {
  Open();
  try {
    running_.Begin(*connection_);
    const UntilReturn until_return{running_};
    auto result = work(*connection_);
    last_error_.clear();
    return result;
  } catch (const Error& error) {
    last_error_ = error.Description();
    running_.Note(error);
    if (error.Is(ErrorNumber::kConnection)) {
      open_.Drop(connection_);
      connection_.reset();
    }
    throw;
  }
}

void DataConnection::DropDead() {
  const std::shared_ptr<DatabaseConnection> standing =
      connection_ != nullptr ? connection_ : open_.Find(provider_, connection_string_);
  if (standing == nullptr) return;
  running_.Begin(*standing);
  const UntilReturn until_return{running_};
  if (standing->IsAlive()) return;
  open_.Drop(standing);
  connection_.reset();
}

ResultSetPtr DataConnection::Execute(std::string_view text, int timeout_seconds) {
  return Attempt([&](DatabaseConnection& connection) {
    ExecuteOptions options;
    options.timeout_seconds = timeout_seconds;
    options.progress = on_progress;
    options.limits = limits;
    return connection.Execute(text, options);
  });
}

std::optional<ResultSetPtr> DataConnection::Describe(std::string_view text, int timeout_seconds) {
  return Attempt(
      [&](DatabaseConnection& connection) { return connection.Describe(text, timeout_seconds); });
}

}  // namespace vorek
