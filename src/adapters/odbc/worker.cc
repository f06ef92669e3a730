#include "adapters/odbc/worker.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace vorek::odbc {
namespace {

constexpr std::chrono::milliseconds kAskEvery{20};

// Lets go of a lock for a call, and takes it again also when that throws.
class Unlock {
 public:
  explicit Unlock(std::unique_lock<std::mutex>& lock) : lock_(lock) { lock_.unlock(); }
  ~Unlock() { lock_.lock(); }
  Unlock(const Unlock&) = delete;
  Unlock& operator=(const Unlock&) = delete;

 private:
  std::unique_lock<std::mutex>& lock_;
};

bool Unlocked(std::unique_lock<std::mutex>& lock, const std::function<bool()>& question) {
  const Unlock unlocked(lock);
  return question();
}

}  // namespace

// What the caller and the thread tell each other; it lives as long as either.
struct Worker::Shared {
  std::mutex mutex;
  std::condition_variable for_caller;
  std::condition_variable for_thread;
  std::thread thread;
  std::function<void()> job;
  bool running = false;
  bool left_behind = false;
  bool ends = false;
  std::exception_ptr failure;
  std::optional<std::size_t> question;
  std::optional<bool> answer;
  Time latest;

  void Begin(std::function<void()> work, Time moment) {
    latest = moment;
    failure = nullptr;
    running = true;
    job = std::move(work);
    for_thread.notify_one();
  }
  // What progress throws is kept until the job has stopped: it waits for the answer.
  void Answer(std::unique_lock<std::mutex>& lock, const Progress& progress,
              std::exception_ptr& thrown) {
    const std::size_t rows = *std::exchange(question, std::nullopt);
    bool wanted = false;
    try {
      wanted = Unlocked(lock, [&] { return progress(rows); });
    } catch (...) {
      thrown = std::current_exception();
    }
    answer = wanted;
    for_thread.notify_one();
  }
  void LeaveBehind() {
    left_behind = true;
    thread.detach();
    for_thread.notify_one();
  }
};

Worker::Worker() : shared_(std::make_shared<Shared>()) {
  shared_->thread = std::thread([shared = shared_] { Serve(shared); });
}

Worker::~Worker() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->ends = true;
    if (shared_->left_behind) return;
  }
  shared_->for_thread.notify_one();
  shared_->thread.join();
}

void Worker::Serve(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->mutex);
  for (;;) {
    shared->for_thread.wait(lock, [&] { return shared->job || shared->ends; });
    if (!shared->job) return;
    std::function<void()> job = std::exchange(shared->job, nullptr);
    lock.unlock();
    std::exception_ptr failure;
    try {
      job();
    } catch (...) {
      failure = std::current_exception();
    }
    job = nullptr;  // what it holds is let go here, not by the caller
    lock.lock();
    shared->failure = failure;
    shared->running = false;
    shared->for_caller.notify_one();
    if (shared->left_behind) return;
  }
}

bool Worker::Run(std::function<void()> job, Time latest, const Progress& progress,
                 const std::function<bool()>& goes_on) {
  Shared& shared = *shared_;
  std::exception_ptr thrown;
  std::unique_lock lock(shared.mutex);
  shared.Begin(std::move(job), latest);
  while (shared.running) {
    if (shared.question) {
      shared.Answer(lock, progress, thrown);
      continue;
    }
    // Asked without the lock: who says so may hold a lock of his own while he calls GiveUpAt.
    const bool wanted = !goes_on || Unlocked(lock, goes_on);
    if (!shared.running || shared.question) continue;
    if (!wanted || std::chrono::steady_clock::now() >= shared.latest) {
      shared.LeaveBehind();
      return false;
    }
    Time next = shared.latest;
    if (goes_on) next = std::min(next, std::chrono::steady_clock::now() + kAskEvery);
    shared.for_caller.wait_until(lock, next);
  }
  if (thrown) std::rethrow_exception(thrown);
  if (shared.failure) std::rethrow_exception(std::exchange(shared.failure, nullptr));
  return true;
}

Worker::Progress Worker::Ask() const {
  return [shared = shared_](std::size_t rows) {
    std::unique_lock lock(shared->mutex);
    if (shared->left_behind) return false;
    shared->question = rows;
    shared->answer.reset();
    shared->for_caller.notify_one();
    shared->for_thread.wait(lock, [&] { return shared->answer || shared->left_behind; });
    return shared->answer.value_or(false);
  };
}

void Worker::GiveUpAt(Time moment) {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->latest = std::min(shared_->latest, moment);
  }
  shared_->for_caller.notify_one();
}

}  // namespace vorek::odbc
