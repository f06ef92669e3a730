#include "engine/pass_bar.h"

#include <optional>
#include <utility>

#include "platform/attempt.h"

namespace vorek {

PassBar::PassBar(ReportControl& control)
    : control_(control), outer_(std::move(control.world.process.watch.on_progress)) {
  control.world.process.watch.on_progress = [&control](std::int32_t percent) {
    VorekProgressBar& bar = control.Progress;
    if (!bar.Visible()) {
      bar.SetVisible(true);
      bar.ZOrder();
    }
    bar.SetValue(percent);
  };
}

PassBar::~PassBar() {
  control_.Progress.SetVisible(false);
  control_.world.process.watch.on_progress = std::move(outer_);
}

void ChangeRows(ReportControl& control, const std::function<void()>& work) {
  control.world.process.data.ForgetInterruption();
  std::optional<Error> error = Attempt(work);
  const bool passed_over = !error && control.world.process.data.Interruption();
  if (passed_over) error = control.world.process.data.Interruption();
  if (!error) return;
  if (passed_over || error->Is(ErrorNumber::kOutOfMemory)) {
    IgnoreAllErrors([&] { control.EmptyGrids(); });
    control.state.FoundRows = -1;
  }
  throw Error(*error);
}

void RunPass(ReportControl& control, const std::function<void()>& work) {
  PassWatch& watch = control.world.process.watch;
  const PassWatch::Pass pass(watch, PassWatch::Leaves::kAll);
  const PassBar bar(control);
  const std::optional<Error> error = Attempt([&] {
    const Grid::Hold main(control.flxMain);
    const Grid::Hold cross_table(control.flxTranspose);
    ChangeRows(control, work);
  });
  const bool cancelled = watch.Cancelled() || (error && error->Is(ErrorNumber::kCancelled));
  if (cancelled) {
    control.world.process.windows().TellCancelled("عمليات لغو شد.");
  } else if (error) {
    throw Error(*error);
  }
}

}  // namespace vorek
