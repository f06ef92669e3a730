#include "adapters/odbc/connection.h"

#include <chrono>
#include <string>
#include <utility>

#include "vorek/error.h"

namespace vorek::odbc {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

// How long a server may take to stop what it was told to stop.
constexpr seconds kGrace{5};

Error NoAnswer() { return Error(ErrorNumber::kConnection, "The server doesn't answer any more."); }

}  // namespace

Connection::Connection(std::shared_ptr<Environment> environment, const ConnectionText& text)
    : session_(std::make_shared<Session>(std::move(environment))) {
  const auto latest = text.login_seconds == 0
                          ? Worker::Time::max()
                          : steady_clock::now() + seconds(text.login_seconds) + kGrace;
  if (!worker_.Run([session = session_, text] { session->Open(text); }, latest, {})) {
    throw NoAnswer();
  }
}

ResultSetPtr Connection::Execute(std::string_view text, const ExecuteOptions& options) {
  if (lost_) throw NoAnswer();
  const auto result = std::make_shared<ResultSetPtr>();
  const Worker::Progress progress = options.progress ? worker_.Ask() : nullptr;
  const auto latest = options.timeout_seconds <= 0
                          ? Worker::Time::max()
                          : steady_clock::now() + seconds(options.timeout_seconds) + kGrace;
  const bool ended = worker_.Run(
      [session = session_, statement = std::string(text), timeout = options.timeout_seconds,
       progress, result] { *result = session->Execute(statement, timeout, progress); },
      latest, options.progress);
  if (!ended) {
    lost_ = true;
    throw NoAnswer();
  }
  return *result;
}

void Connection::Cancel() noexcept {
  if (!lost_ && session_->Cancel()) worker_.GiveUpAt(steady_clock::now() + kGrace);
}

}  // namespace vorek::odbc
