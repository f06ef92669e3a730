#include "adapters/odbc/watchdog.h"

#include <utility>

namespace vorek::odbc {

Watchdog::Watchdog() : thread_([this] { Watch(); }) {}

Watchdog::~Watchdog() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void Watchdog::Arm(Time moment, Action action) {
  {
    const std::lock_guard lock(mutex_);
    moment_ = moment;
    action_ = std::move(action);
  }
  changed_.notify_one();
}

// The thread isn't woken: it finds its moment gone when that comes.
void Watchdog::Disarm() {
  const std::lock_guard lock(mutex_);
  moment_.reset();
  action_ = nullptr;
}

void Watchdog::Watch() {
  std::unique_lock lock(mutex_);
  while (!ends_) {
    if (!moment_) {
      changed_.wait(lock);
    } else if (std::chrono::steady_clock::now() < *moment_) {
      changed_.wait_until(lock, *moment_);
    } else {
      moment_ = action_();  // under the lock, so that Disarm waits for it
    }
  }
}

}  // namespace vorek::odbc
