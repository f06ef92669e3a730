#include "catalog/data_connection.h"

namespace vorek {

void RunningStatement::Begin(DatabaseConnection& connection) {
  const std::lock_guard lock(mutex_);
  connection_ = &connection;
}

void RunningStatement::End() {
  const std::lock_guard lock(mutex_);
  connection_ = nullptr;
}

void RunningStatement::Cancel() noexcept {
  const std::lock_guard lock(mutex_);
  if (connection_ != nullptr) connection_->Cancel();
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
  try {
    connection_ = FindProvider(providers_, provider_).Connect(connection_string_);
  } catch (const Error& error) {
    last_error_ = error.Description();
    throw;
  }
}

ResultSetPtr DataConnection::Run(std::string_view text, int timeout_seconds) {
  struct Running {
    RunningStatement& statement;
    ~Running() { statement.End(); }
  };
  running_.Begin(*connection_);
  const Running until_return{running_};
  return connection_->Execute(text, {timeout_seconds, on_progress});
}

ResultSetPtr DataConnection::Execute(std::string_view text, int timeout_seconds) {
  Open();
  try {
    ResultSetPtr result = Run(text, timeout_seconds);
    last_error_.clear();
    return result;
  } catch (const Error& error) {
    last_error_ = error.Description();
    if (error.Is(ErrorNumber::kConnection)) connection_.reset();
    throw;
  }
}

}  // namespace vorek
