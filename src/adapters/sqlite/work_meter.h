#ifndef VOREK_ADAPTERS_SQLITE_WORK_METER_H_
#define VOREK_ADAPTERS_SQLITE_WORK_METER_H_

#include <cstddef>
#include <functional>
#include <utility>

namespace vorek::sqlite {

// Counts what the functions of a connection do, and asks at bounded steps whether the run has to
// end: SQLite asks between the steps of its machine alone, and one step may be a long function.
class WorkMeter {
 public:
  // Without must_stop nothing is ever asked.
  explicit WorkMeter(std::function<bool()> must_stop) : must_stop_(std::move(must_stop)) {}

  // Adds work, in bytes or letters looked at. True if the run has to end.
  bool Spend(std::size_t work) {
    spent_ += work;
    return spent_ >= kBetweenQuestions && Ask();
  }

 private:
  static constexpr std::size_t kBetweenQuestions = 1U << 18U;  // below a millisecond

  bool Ask() {
    spent_ = 0;
    return must_stop_ && must_stop_();
  }

  std::function<bool()> must_stop_;
  std::size_t spent_ = 0;
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_WORK_METER_H_
