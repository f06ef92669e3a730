#ifndef VOREK_APPS_VOREK_DRIVE_BY_USER_H_
#define VOREK_APPS_VOREK_DRIVE_BY_USER_H_

#include <string>

#include "drive/words.h"
#include "widgets/control.h"

// What a script does as a user goes through the calls that a host's own screen has
// (vorek/shown_control.h), so that it is refused what they refuse.
namespace vorek::drive {

// A control as those calls take it.
struct UserTarget {
  explicit UserTarget(Control& control);
  Control& root;
  std::string path;
};

// Whether it shows and is enabled, with all that it stands in.
bool CanReach(const Control& control);

// Throws Error(kInvalidCall) for what a user couldn't do.
void MustBeDone(bool done, const Words& words);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_BY_USER_H_
