#ifndef VOREK_APPS_VOREK_INTERRUPT_WATCH_H_
#define VOREK_APPS_VOREK_INTERRUPT_WATCH_H_

#include <atomic>
#include <functional>
#include <thread>

namespace vorek {

// While it lives, Ctrl+C stops what runs instead of the program, so that its end leaves no half of
// a file and the server works on nothing. A second one ends the program as usual. One at a time.
class InterruptWatch {
 public:
  // The exit code of a command that was stopped, as shells know it.
  static constexpr int kExitCode = 130;

  // cancel is called on a thread of the watch's own.
  explicit InterruptWatch(std::function<void()> cancel);
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  bool Interrupted() const { return interrupted_; }

 private:
  void Wait();

  std::function<void()> cancel_;
  std::atomic<bool> interrupted_ = false;
  int pipe_[2] = {-1, -1};
  std::jthread thread_;
};

// While it lives, Ctrl+C ends the program as usual: what waits for a person has nothing to bring to
// an end, and no wait for a line can be ended otherwise.
class InterruptPause {
 public:
  InterruptPause();
  ~InterruptPause();
  InterruptPause(const InterruptPause&) = delete;
  InterruptPause& operator=(const InterruptPause&) = delete;

 private:
  void (*before_)(int);
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_INTERRUPT_WATCH_H_
