#ifndef VOREK_EXPORT_LONG_WORK_H_
#define VOREK_EXPORT_LONG_WORK_H_

#include <cstdint>
#include <functional>

#include "grid/report_context.h"
#include "vorek/pass_watch.h"

namespace vorek {

// An export over so many rows: moves the report's progress bar, which is on show meanwhile, and
// lets the user stop the work.
class LongWork {
 public:
  LongWork(ReportContext& report, std::int32_t rows);
  ~LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  // The next row begins. Throws Error(kCancelled) when the user doesn't want to wait.
  void Step() { watch_.At(done_++, rows_); }
  // The same for a piece of the work that begins with that row.
  void At(std::int32_t row) { watch_.At(row - row % PassWatch::kRowsBetweenQuestions, rows_); }
  // And for work that has no rows to count.
  void Ask() { watch_.At(0); }

 private:
  PassWatch& watch_;
  PassWatch::Pass pass_;
  VorekProgressBar* bar_;
  std::function<void(std::int32_t)> outer_;  // that of a pass around this one
  std::int32_t rows_;
  std::int32_t done_ = 0;
};

}  // namespace vorek

#endif  // VOREK_EXPORT_LONG_WORK_H_
