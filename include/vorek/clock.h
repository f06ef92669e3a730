#ifndef VOREK_CLOCK_H_
#define VOREK_CLOCK_H_

#include <string>

namespace vorek {

// A moment in the user's time zone, Gregorian.
struct DateTime {
  int year = 1970;
  int month = 1;  // 1 to 12
  int day = 1;    // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
};

}  // namespace vorek

#endif  // VOREK_CLOCK_H_
