#ifndef VOREK_ADAPTERS_SYSTEM_SYSTEM_CLOCK_H_
#define VOREK_ADAPTERS_SYSTEM_SYSTEM_CLOCK_H_

#include "vorek/clock.h"

namespace vorek {

// The machine's own clock in its time zone.
class SystemClock : public Clock {
 public:
  DateTime Now() const override;
};

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_SYSTEM_CLOCK_H_
