#include "adapters/qt/selection_watch.h"

#include <QElapsedTimer>
#include <utility>

namespace vorek::qt {

SelectionWatch::SelectionWatch(std::function<bool()> ready,
                               std::function<std::unique_ptr<SelectionScan>()> scan,
                               std::function<void(const SelectionFigures&)> tell)
    : ready_(std::move(ready)), begin_(std::move(scan)), tell_(std::move(tell)) {
  slice_.setSingleShot(true);
  connect(&slice_, &QTimer::timeout, this, [this] { Read(); });
}

void SelectionWatch::Changed() {
  scan_.reset();
  slice_.start(0);
}

void SelectionWatch::Read() {
  constexpr int kSlice = 12;   // milliseconds: a frame of the screen is 16
  constexpr int kRows = 4096;  // between two looks at the clock
  constexpr int kAgain = 50;   // milliseconds
  if (!ready_()) {
    scan_.reset();
    slice_.start(kAgain);
    return;
  }
  if (scan_ == nullptr) scan_ = begin_();
  if (scan_ == nullptr) {
    tell_({});
    return;
  }
  QElapsedTimer clock;
  clock.start();
  while (!scan_->Step(kRows)) {
    if (clock.elapsed() < kSlice) continue;
    slice_.start(0);
    return;
  }
  tell_(scan_->Figures());
  scan_.reset();
}

}  // namespace vorek::qt
