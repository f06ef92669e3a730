#ifndef VOREK_ADAPTERS_ODBC_STOPPER_H_
#define VOREK_ADAPTERS_ODBC_STOPPER_H_

#include <sql.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

#include "adapters/odbc/driver_traits.h"
#include "adapters/odbc/thread_wait.h"
#include "adapters/odbc/watchdog.h"
#include "vorek/error.h"

namespace vorek::odbc {

// Tells the driver to stop the statement that runs: when somebody cancels it, and at its deadline.
class Stopper {
 public:
  // A statement while it runs. Made, told and ended by the thread that calls the driver.
  class Running {
   public:
    // No deadline for timeout_seconds <= 0.
    Running(Stopper& stopper, SQLHANDLE statement, int timeout_seconds, const DriverTraits& traits);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    // The driver has sent all that it sends for this statement.
    void Sent() noexcept { stopper_.sending_ = false; }

   private:
    Stopper& stopper_;
  };

  // From any thread; doesn't wait for the driver. True if a statement runs.
  bool Cancel() noexcept;

  // The statement has failed: it isn't told to stop any more, and its words can be read. A driver
  // that is told meanwhile forgets them.
  void Over();

  // Throws Error(kTimeout) or Error(kCancelled) if the statement was told to stop: what it gave
  // isn't the whole any more, whatever the driver says of it.
  void ThrowIfStopped() const;

  // True if the driver was told to stop the last statement.
  bool WasTold() const { return told_; }

  // The statement's error: Error(kTimeout) for "cancelled" by a server that keeps the time-out
  // itself.
  Error InOurWords(const Error& error) const;

 private:
  enum class Reason { kNone, kCancelled, kTimeout };
  using Clock = std::chrono::steady_clock;

  std::optional<Clock::time_point> StopAtDeadline() noexcept;
  std::optional<Clock::time_point> Stop() noexcept;
  bool MayTell(Clock::time_point now);

  std::mutex mutex_;
  SQLHANDLE statement_ = SQL_NULL_HANDLE;
  std::atomic<Reason> reason_{Reason::kNone};
  std::atomic<bool> told_{false};
  std::atomic<bool> sending_{false};
  std::optional<ThreadWait> thread_;        // the one that calls the driver, where that has to wait
  std::optional<Clock::time_point> asked_;  // when the driver should have been told
  std::optional<Clock::time_point> deadline_;
  Watchdog watchdog_;  // the last member: its thread uses the others
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_STOPPER_H_
