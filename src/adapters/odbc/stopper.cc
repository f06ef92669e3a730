#include "adapters/odbc/stopper.h"

#include <sqlext.h>

#include <chrono>

#include "adapters/odbc/handle.h"

namespace vorek::odbc {
namespace {

using std::chrono::milliseconds;

// How often it is looked whether a text has been sent.
constexpr milliseconds kLookEvery{2};

// How long sending a text may take, where the system doesn't tell what a thread does.
constexpr milliseconds kSendsWithin{500};

Error TimeoutError() { return Error(ErrorNumber::kTimeout, "Query timeout expired"); }

}  // namespace

Stopper::Running::Running(Stopper& stopper, SQLHANDLE statement, int timeout_seconds,
                          bool cancels_into_text)
    : stopper_(stopper) {
  {
    const std::lock_guard lock(stopper.mutex_);
    stopper.statement_ = statement;
    stopper.reason_ = Reason::kNone;
    stopper.sending_ = cancels_into_text;
    stopper.begin_ = Clock::now();
    stopper.thread_.reset();
    if (cancels_into_text) stopper.thread_.emplace();
  }
  stopper.deadline_.reset();
  if (timeout_seconds <= 0) return;
  stopper.deadline_ = Clock::now() + std::chrono::seconds(timeout_seconds);
  // The server's own time-out is asked for too: it frees the server when we are gone.
  SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT,
                 AttributeNumber(static_cast<std::size_t>(timeout_seconds)), 0);
  stopper.watchdog_.Arm(*stopper.deadline_, [&stopper] { return stopper.StopAtDeadline(); });
}

Stopper::Running::~Running() {
  stopper_.watchdog_.Disarm();
  const std::lock_guard lock(stopper_.mutex_);
  stopper_.statement_ = SQL_NULL_HANDLE;
}

// The driver is told by the watchdog's thread: it may wait for a server that is gone.
bool Stopper::Cancel() noexcept {
  {
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock.owns_lock()) return true;  // it is being told right now
    if (statement_ == SQL_NULL_HANDLE) return false;
    Reason none = Reason::kNone;
    if (!reason_.compare_exchange_strong(none, Reason::kCancelled)) return true;
  }
  watchdog_.Arm(Clock::now(), [this] { return Stop(); });
  return true;
}

std::optional<Stopper::Clock::time_point> Stopper::StopAtDeadline() noexcept {
  Reason none = Reason::kNone;
  reason_.compare_exchange_strong(none, Reason::kTimeout);
  return Stop();
}

// Tells the driver, or says when to try again.
std::optional<Stopper::Clock::time_point> Stopper::Stop() noexcept {
  const std::lock_guard lock(mutex_);
  if (statement_ == SQL_NULL_HANDLE || reason_ == Reason::kNone) return std::nullopt;
  if (!MayStop()) return Clock::now() + kLookEvery;
  SQLCancel(statement_);
  return std::nullopt;
}

// FreeTDS writes a cancel from another thread into the buffer that the text is being put in: what
// the server gets then is neither, or an assertion ends the program. Once its thread waits, the
// text is on its way; when the call for it has returned, the rest is reading. Source:
// tds_send_cancel and tds_dataout_stream_write of FreeTDS 1.3.
bool Stopper::MayStop() {
  if (!sending_) return true;
  return thread_->Waits().value_or(Clock::now() >= begin_ + kSendsWithin);
}

void Stopper::ThrowIfStopped() const {
  if (reason_ == Reason::kTimeout) throw TimeoutError();
  if (reason_ == Reason::kCancelled) {
    throw Error(ErrorNumber::kCancelled, "Operation was cancelled.");
  }
}

// The server may be ahead of the watchdog, and its clock and ours may differ by a little.
void Stopper::ThrowIfOverdue(const Error& error) const {
  constexpr milliseconds kLeeway{250};
  const bool overdue = deadline_ && Clock::now() + kLeeway >= *deadline_;
  if (overdue && error.Is(ErrorNumber::kCancelled)) throw TimeoutError();
}

}  // namespace vorek::odbc
