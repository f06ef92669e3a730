#include "adapters/odbc/stopper.h"

#include <sqlext.h>

#include <chrono>

#include "adapters/odbc/handle.h"

namespace vorek::odbc {
namespace {

using std::chrono::milliseconds;

// Between two looks at a thread, both of which have to find it in the same wait.
constexpr milliseconds kLookEvery{3};

// How long a thread may be looked at in vain; it reads what comes without a break, then.
constexpr milliseconds kLookFor{1000};

// By how many seconds a driver's own time-out comes behind ours.
constexpr std::size_t kLater = 2;

Error TimeoutError() { return Error(ErrorNumber::kTimeout, "Query timeout expired"); }

}  // namespace

Stopper::Running::Running(Stopper& stopper, SQLHANDLE statement, int timeout_seconds,
                          const DriverTraits& traits)
    : stopper_(stopper) {
  {
    const std::lock_guard lock(stopper.mutex_);
    stopper.statement_ = statement;
    stopper.reason_ = Reason::kNone;
    stopper.told_ = false;
    stopper.sending_ = true;
    stopper.asked_.reset();
    stopper.thread_.reset();
    if (traits.cancel_needs_a_wait) stopper.thread_.emplace();
  }
  stopper.deadline_.reset();
  if (timeout_seconds <= 0) return;
  stopper.deadline_ = Clock::now() + std::chrono::seconds(timeout_seconds);
  stopper.watchdog_.Arm(*stopper.deadline_, [&stopper] { return stopper.StopAtDeadline(); });
  // The driver's or the server's own time-out is asked for too: it frees the server when we are
  // gone. It comes later, so that a cancel never meets the failure that it makes.
  SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT,
                 AttributeNumber(static_cast<std::size_t>(timeout_seconds) + kLater), 0);
}

Stopper::Running::~Running() {
  stopper_.watchdog_.Disarm();
  stopper_.Over();
}

void Stopper::Over() {
  const std::lock_guard lock(mutex_);
  statement_ = SQL_NULL_HANDLE;
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
  const Clock::time_point now = Clock::now();
  if (!MayTell(now)) return now + kLookEvery;
  told_ = true;
  SQLCancel(statement_);
  return std::nullopt;
}

// FreeTDS is safe to be told from another thread only while its own waits for the server. While it
// sends, the cancel goes into the buffer that the text is being put in: the server gets neither, or
// an assertion ends the program. While it reads, its thread may never be woken again, or the next
// statement is cancelled; our own loop over the rows stops then, and as a last resort it is told.
// Source: tds_send_cancel, tds_connection_network and tds_dataout_stream_write of FreeTDS 1.3.
bool Stopper::MayTell(Clock::time_point now) {
  if (!thread_) return true;
  if (!asked_) asked_ = now;
  const std::optional<bool> waits = thread_->WaitsSinceLastLook();
  if (waits.value_or(false)) return true;
  return !(waits && sending_) && now >= *asked_ + kLookFor;
}

void Stopper::ThrowIfStopped() const {
  if (reason_ == Reason::kTimeout) throw TimeoutError();
  if (reason_ == Reason::kCancelled) {
    throw Error(ErrorNumber::kCancelled, "Operation was cancelled.");
  }
}

// A server may keep a time-out of its own, and its clock and ours may differ by a little.
Error Stopper::InOurWords(const Error& error) const {
  constexpr milliseconds kLeeway{250};
  const bool overdue = deadline_ && Clock::now() + kLeeway >= *deadline_;
  return overdue && error.Is(ErrorNumber::kCancelled) ? TimeoutError() : error;
}

}  // namespace vorek::odbc
