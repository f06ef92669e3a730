#ifndef VOREK_PASS_WATCH_H_
#define VOREK_PASS_WATCH_H_

#include <cstdint>
#include <functional>

#include "vorek/windows.h"

namespace vorek {

// Asked now and then by a work that knows no watch; throws Error(kCancelled) to stop it.
using Question = std::function<void()>;

// Lets a long pass over rows be seen and cancelled: the pass calls At for each row, every few
// thousand of them the screen is asked whether to go on, and a user who cancelled makes At throw
// Error(kCancelled). Outside of a Pass nothing is asked.
//
// A step may ignore the error, as it does others: from then on every question throws, until the
// outermost Pass ends, and Cancelled tells it.
class PassWatch {
 public:
  // What a cancel leaves behind.
  enum class Leaves {
    kNothing,  // the grids are emptied: a pass may stop anywhere
    kAll,      // everything as before: a pass stops while it has changed nothing
  };

  // A pass, or a run of many, while it lives. Of nested ones the outermost counts.
  class Pass {
   public:
    Pass(PassWatch& watch, Leaves leaves) : watch_(watch) { watch_.Begin(leaves); }
    ~Pass() { watch_.End(); }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

   private:
    PassWatch& watch_;
  };

  // While it lives a pass that leaves all as before isn't stopped: it has begun to change things.
  class Unbroken {
   public:
    explicit Unbroken(PassWatch& watch) : watch_(watch) { ++watch_.unbroken_; }
    ~Unbroken() { --watch_.unbroken_; }
    Unbroken(const Unbroken&) = delete;
    Unbroken& operator=(const Unbroken&) = delete;

   private:
    PassWatch& watch_;
  };

  explicit PassWatch(Windows& windows) : windows_(windows) {}

  // Row `row` of `rows` is next; 0 for a number of rows that isn't known. Throws Error(kCancelled).
  void At(std::int32_t row, std::int32_t rows = 0) {
    if (row % kRowsBetweenQuestions == 0) Ask(row, rows);
  }
  static constexpr std::int32_t kRowsBetweenQuestions = 4096;

  bool Running() const { return depth_ > 0; }
  // The pass under way was cancelled.
  bool Cancelled() const { return cancelled_; }

  // Told with each question how far the pass has come, from 0 to 100.
  std::function<void(std::int32_t percent)> on_progress;

 private:
  void Begin(Leaves leaves);
  void End();
  void Ask(std::int32_t row, std::int32_t rows);
  bool MayStop() const { return leaves_ == Leaves::kNothing || unbroken_ == 0; }

  Windows& windows_;
  Leaves leaves_ = Leaves::kNothing;
  int depth_ = 0;
  int unbroken_ = 0;
  bool cancelled_ = false;
};

}  // namespace vorek

#endif  // VOREK_PASS_WATCH_H_
