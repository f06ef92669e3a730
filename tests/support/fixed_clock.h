#ifndef VOREK_TESTS_SUPPORT_FIXED_CLOCK_H_
#define VOREK_TESTS_SUPPORT_FIXED_CLOCK_H_

#include "vorek/clock.h"

namespace vorek {

// A clock that stands at 24 November 2026, 10:30: the 3rd of Azar 1405.
class FixedClock : public Clock {
 public:
  DateTime Now() const override { return {2026, 11, 24, 10, 30, 0}; }
};

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_FIXED_CLOCK_H_
