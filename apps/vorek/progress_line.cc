#include "progress_line.h"

#include <unistd.h>

#include <iostream>
#include <utility>

#include "text/utf8.h"

namespace vorek {

using std::chrono::steady_clock;

ProgressLine::ProgressLine()
    : terminal_(isatty(STDERR_FILENO) != 0), next_(steady_clock::now() + std::chrono::seconds(1)) {}

bool ProgressLine::Due() {
  if (!terminal_ || steady_clock::now() < next_) return false;
  next_ = steady_clock::now() + std::chrono::milliseconds(200);
  return true;
}

void ProgressLine::Show(std::string text) {
  if (text == shown_) return;
  Clear();
  shown_ = std::move(text);
  std::cerr << shown_ << std::flush;
}

void ProgressLine::Clear() {
  if (shown_.empty()) return;
  std::cerr << '\r' << std::string(text::DisplayWidth(shown_), ' ') << '\r' << std::flush;
  shown_.clear();
}

}  // namespace vorek
