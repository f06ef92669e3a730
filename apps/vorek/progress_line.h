#ifndef VOREK_APPS_VOREK_PROGRESS_LINE_H_
#define VOREK_APPS_VOREK_PROGRESS_LINE_H_

#include <chrono>
#include <string>

namespace vorek {

// A line of standard error that tells how far a long work is, written over again and again and gone
// at its end. Only a terminal gets it, and only of what takes longer than a second.
class ProgressLine {
 public:
  ProgressLine();
  ~ProgressLine() { Clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  // True if a text would be shown now: a few times a second.
  bool Due();
  void Show(std::string text);
  // Before anything else is written.
  void Clear();

 private:
  using Time = std::chrono::steady_clock::time_point;

  bool terminal_;
  Time next_;
  std::string shown_;
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_PROGRESS_LINE_H_
