#include "vorek/pass_watch.h"

#include "vorek/error.h"

namespace vorek {

void PassWatch::Begin(Leaves leaves) {
  if (depth_++ > 0) return;
  leaves_ = leaves;
  cancelled_ = false;
  windows_.BeginPass();
}

void PassWatch::End() {
  if (--depth_ > 0) return;
  cancelled_ = false;
  windows_.EndPass();
}

void PassWatch::Ask(std::int32_t row, std::int32_t rows) {
  if (!Running()) return;
  if (on_progress && rows > 0) {
    on_progress(static_cast<std::int32_t>(std::int64_t{100} * row / rows));
  }
  // The screen lives on also while a wish to cancel comes too late.
  const bool goes_on = windows_.PassGoesOn();
  if (!MayStop()) return;
  cancelled_ = cancelled_ || !goes_on;
  if (cancelled_) throw Error(ErrorNumber::kCancelled, "عمليات لغو شد.");
}

}  // namespace vorek
