#ifndef VOREK_GRID_UNDRAWN_PASS_H_
#define VOREK_GRID_UNDRAWN_PASS_H_

#include "grid/report_context.h"

namespace vorek {

// A pass over flxMain while it lives: nothing is drawn, and the pointer is the hourglass.
class UndrawnPass {
 public:
  explicit UndrawnPass(ReportContext& report) : report_(report) {
    constexpr int kHourglass = 11;
    report.process.windows().SetMousePointer(kHourglass);
    report.flxMain.SetRedraw(false);
  }
  ~UndrawnPass() {
    report_.flxMain.SetRedraw(true);
    report_.process.windows().SetMousePointer(0);
  }
  UndrawnPass(const UndrawnPass&) = delete;
  UndrawnPass& operator=(const UndrawnPass&) = delete;

 private:
  ReportContext& report_;
};

}  // namespace vorek

#endif  // VOREK_GRID_UNDRAWN_PASS_H_
