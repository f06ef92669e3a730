#ifndef VOREK_ADAPTERS_ODBC_WORKER_H_
#define VOREK_ADAPTERS_ODBC_WORKER_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace vorek::odbc {

// Runs calls of a driver on a thread of its own. A driver waits for a server whose network has
// vanished as long as the system's own time-outs last, or for ever; the caller leaves it behind.
class Worker {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Progress = std::function<bool(std::size_t rows)>;

  Worker();
  // Waits for the thread, unless a job was left behind.
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  // Runs the job there and throws what it throws. While it runs, progress answers its Ask here, on
  // the calling thread, and so does goes_on every few milliseconds, if there is one. False if the
  // job hasn't ended by `latest` or goes_on says no: it is left behind with all that it holds. A
  // job must hold what it uses. REQUIRES: no job was left behind before.
  bool Run(std::function<void()> job, Time latest, const Progress& progress,
           const std::function<bool()>& goes_on = nullptr);

  // From within the job: what the caller's progress says; false once the job is left behind.
  // The result outlives the worker.
  Progress Ask() const;

  // The job that runs is left behind at this moment, should that come before its own.
  void GiveUpAt(Time moment);

 private:
  struct Shared;
  static void Serve(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_WORKER_H_
