#ifndef VOREK_ENGINE_PASS_BAR_H_
#define VOREK_ENGINE_PASS_BAR_H_

#include <cstdint>
#include <functional>

#include "engine/report_control.h"

namespace vorek {

// While it lives, long passes over the control's rows move its Progress, which shows from the first
// question of a pass on (PassWatch).
class PassBar {
 public:
  explicit PassBar(ReportControl& control);
  ~PassBar();
  PassBar(const PassBar&) = delete;
  PassBar& operator=(const PassBar&) = delete;

 private:
  ReportControl& control_;
  std::function<void(std::int32_t)> outer_;
};

// Does something with the rows on show and throws its errors. Where the memory ended in the midst
// of it, or a step was passed over because the database was lost, nobody knows what the rows are:
// none of them stay.
void ChangeRows(ReportControl& control, const std::function<void()>& work);

// ChangeRows for what a user started by hand. A user who cancels it gets the rows as they were and
// a line that says so; other errors are thrown.
void RunPass(ReportControl& control, const std::function<void()>& work);

}  // namespace vorek

#endif  // VOREK_ENGINE_PASS_BAR_H_
