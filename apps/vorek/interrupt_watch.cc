#include "interrupt_watch.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <utility>

#include "vorek/error.h"

namespace vorek {
namespace {

constexpr char kInterrupt = 'i';
constexpr char kEnd = 'e';

// A handler of a signal may do little more than write into a pipe.
volatile std::sig_atomic_t g_pipe = -1;

void Write(int pipe, char what) {
  // A pipe that takes no letter holds enough of them.
  if (::write(pipe, &what, 1) != 1) return;
}

void Interrupt(int) {
  std::signal(SIGINT, SIG_DFL);
  Write(g_pipe, kInterrupt);
}

}  // namespace

InterruptPause::InterruptPause() : before_(std::signal(SIGINT, SIG_DFL)) {}

InterruptPause::~InterruptPause() { std::signal(SIGINT, before_); }

InterruptWatch::InterruptWatch(std::function<void()> cancel) : cancel_(std::move(cancel)) {
  if (::pipe2(pipe_, O_CLOEXEC) != 0) {
    throw Error(ErrorNumber::kInvalidCall, "no pipe can be had to wait for Ctrl+C");
  }
  thread_ = std::jthread([this] { Wait(); });
  g_pipe = pipe_[1];
  std::signal(SIGINT, Interrupt);
}

InterruptWatch::~InterruptWatch() {
  std::signal(SIGINT, SIG_DFL);
  Write(pipe_[1], kEnd);
  thread_.join();
  ::close(pipe_[0]);
  ::close(pipe_[1]);
}

void InterruptWatch::Wait() {
  char what = kEnd;
  while (::read(pipe_[0], &what, 1) == 1 && what == kInterrupt) {
    interrupted_ = true;
    cancel_();
  }
}

}  // namespace vorek
