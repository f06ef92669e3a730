#include "adapters/qt/background_provider.h"

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace vorek::qt {
namespace {

constexpr std::chrono::milliseconds kMoment(60);  // that a window may stand still

bool OnScreenThread() {
  return QCoreApplication::instance() != nullptr &&
         QThread::currentThread() == QCoreApplication::instance()->thread();
}

// A thread that does one job after another; the giver waits for each.
class Worker {
 public:
  Worker() : thread_([this] { Loop(); }) {}
  ~Worker() {
    {
      const std::lock_guard lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  void Start(std::function<void()> job) {
    {
      const std::lock_guard lock(mutex_);
      job_ = std::move(job);
      done_ = false;
    }
    changed_.notify_all();
  }
  // True when the job is done, false when the time is up.
  bool Wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [this] { return done_; });
  }
  void Wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return done_; });
  }

 private:
  void Loop() {
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return stop_ || job_; });
      if (!job_) return;
      const std::function<void()> job = std::exchange(job_, nullptr);
      lock.unlock();
      job();
      lock.lock();
      done_ = true;
      changed_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::function<void()> job_;
  bool done_ = true;
  bool stop_ = false;
  std::thread thread_;  // last: it uses the others
};

class BackgroundConnection : public DatabaseConnection {
 public:
  explicit BackgroundConnection(std::shared_ptr<BusyScreen> busy) : busy_(std::move(busy)) {}
  ~BackgroundConnection() override {
    worker_.Start([this] { inner_.reset(); });
    worker_.Wait();
  }

  void Open(DatabaseProvider& provider, std::string_view connection_string,
            const std::function<bool()>& goes_on) {
    Run(
        [&] {
          auto opened =
              provider.ConnectWhile(connection_string, [this] { return !cancelled_.load(); });
          const std::lock_guard lock(cancel_mutex_);
          inner_ = std::move(opened);
        },
        goes_on ? [&goes_on](std::size_t) { return goes_on(); }
                : std::function<bool(std::size_t)>());
  }

  ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override {
    ResultSetPtr result;
    ExecuteOptions inner = options;
    inner.progress = [this](std::size_t rows) {
      rows_ = rows;
      return !cancelled_;
    };
    Run([&] { result = inner_->Execute(text, inner); }, options.progress);
    // A cancel that comes while the answer stands behind a later wait.
    if (result != nullptr && busy_->Cancelled()) {
      throw Error(ErrorNumber::kCancelled, "The statement was cancelled.");
    }
    return result;
  }

  std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds) override {
    std::optional<ResultSetPtr> columns;
    Run([&] { columns = inner_->Describe(text, timeout_seconds); }, nullptr);
    return columns;
  }

  bool IsAlive() override {
    bool alive = true;
    Run([&] { alive = inner_->IsAlive(); }, nullptr);
    return alive;
  }

  void Cancel() noexcept override {
    cancelled_ = true;
    const std::lock_guard lock(cancel_mutex_);
    if (inner_ != nullptr) inner_->Cancel();
  }

 private:
  // Does the job on the worker's thread and waits for it; an error of it is thrown here.
  void Run(const std::function<void()>& job, const std::function<bool(std::size_t)>& progress) {
    if (busy_->Active()) {
      throw Error(ErrorNumber::kInvalidCall, "Another statement is still running.");
    }
    if (busy_->Abandoned()) {
      throw Error(ErrorNumber::kCancelled, "The statement was cancelled.");
    }
    busy_->Begin();
    std::exception_ptr failure;
    rows_ = 0;
    cancelled_ = false;
    worker_.Start([&] {
      try {
        job();
      } catch (...) {
        failure = std::current_exception();
      }
    });
    Await(progress);
    if (failure != nullptr) std::rethrow_exception(failure);
  }

  void Await(const std::function<bool(std::size_t)>& progress) {
    if (worker_.Wait(kMoment)) return;
    if (!OnScreenThread()) {
      while (!worker_.Wait(kMoment)) {
        if (progress && !progress(rows_)) Cancel();
      }
      return;
    }
    busy_->Await({.done =
                      [&] {
                        if (worker_.Wait(std::chrono::milliseconds(0))) return true;
                        if (progress && !progress(rows_)) Cancel();
                        return false;
                      },
                  .rows = [this] { return rows_.load(); },
                  .cancel = [this] { Cancel(); }});
  }

  std::shared_ptr<BusyScreen> busy_;
  std::atomic<std::size_t> rows_ = 0;
  std::atomic<bool> cancelled_ = false;
  std::mutex cancel_mutex_;
  std::unique_ptr<DatabaseConnection> inner_;  // made and gone on the worker's thread
  Worker worker_;
};

}  // namespace

std::unique_ptr<DatabaseConnection> BackgroundProvider::ConnectWhile(
    std::string_view connection_string, const std::function<bool()>& goes_on) {
  auto connection = std::make_unique<BackgroundConnection>(busy_);
  connection->Open(*provider_, connection_string, goes_on);
  return connection;
}

}  // namespace vorek::qt
