#ifndef VOREK_ADAPTERS_ODBC_WATCHDOG_H_
#define VOREK_ADAPTERS_ODBC_WATCHDOG_H_

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace vorek::odbc {

// Calls an action once a moment has passed, from a thread of its own: a driver's time-out covers
// neither the fetch of the rows nor a network that is gone.
class Watchdog {
 public:
  using Time = std::chrono::steady_clock::time_point;
  // Tells when it wants to be called again, if it does.
  using Action = std::function<std::optional<Time>()>;

  Watchdog();
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  void Arm(Time moment, Action action);

  // The action doesn't run any more when this returns.
  void Disarm();

 private:
  void Watch();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<Time> moment_;
  Action action_;
  bool ends_ = false;
  std::thread thread_;  // the last member: it uses the others
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_WATCHDOG_H_
