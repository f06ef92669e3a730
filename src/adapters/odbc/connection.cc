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

// How long a sign of life may take.
constexpr int kProbeSeconds = 3;

Error NoAnswer() { return Error(ErrorNumber::kConnection, "The server doesn't answer any more."); }

}  // namespace

Connection::Connection(std::shared_ptr<Environment> environment, const ConnectionText& text,
                       const std::function<bool()>& goes_on)
    : session_(std::make_shared<Session>(std::move(environment))) {
  const auto latest = text.login_seconds == 0
                          ? Worker::Time::max()
                          : steady_clock::now() + seconds(text.login_seconds) + kGrace;
  bool given_up = false;
  const auto asked = [&] {
    given_up = !goes_on();
    return !given_up;
  };
  if (worker_.Run([session = session_, text] { session->Open(text); }, latest, {},
                  goes_on ? std::function<bool()>(asked) : nullptr)) {
    return;
  }
  if (given_up) throw Error(ErrorNumber::kCancelled, "Operation was cancelled.");
  throw NoAnswer();
}

void Connection::Await(std::function<void()> work, int timeout_seconds,
                       const std::function<bool(std::size_t)>& progress) {
  const auto latest = timeout_seconds <= 0
                          ? Worker::Time::max()
                          : steady_clock::now() + seconds(timeout_seconds) + kGrace;
  if (worker_.Run(std::move(work), latest, progress)) return;
  lost_ = true;
  throw NoAnswer();
}

ResultSetPtr Connection::Execute(std::string_view text, const ExecuteOptions& options) {
  if (lost_) throw NoAnswer();
  const auto result = std::make_shared<ResultSetPtr>();
  const Worker::Progress progress = options.progress ? worker_.Ask() : nullptr;
  const auto run = [session = session_, statement = std::string(text),
                    timeout = options.timeout_seconds, limits = options.limits, progress,
                    result] { *result = session->Execute(statement, timeout, limits, progress); };
  Await(run, options.timeout_seconds, options.progress);
  return *result;
}

std::optional<ResultSetPtr> Connection::Describe(std::string_view text, int timeout_seconds) {
  if (lost_) throw NoAnswer();
  const auto columns = std::make_shared<ResultSetPtr>();
  Await([session = session_, statement = std::string(text), timeout_seconds,
         columns] { *columns = session->Describe(statement, timeout_seconds); },
        timeout_seconds, {});
  return *columns;
}

void Connection::Cancel() noexcept {
  if (!lost_ && session_->Cancel()) worker_.GiveUpAt(steady_clock::now() + kGrace);
}

// A server that refuses the text answers too.
bool Connection::IsAlive() {
  try {
    Execute("select 1", {kProbeSeconds, {}});
  } catch (const Error& error) {
    return !error.Is(ErrorNumber::kConnection) && !error.Is(ErrorNumber::kTimeout);
  }
  return true;
}

}  // namespace vorek::odbc
