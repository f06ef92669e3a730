#include "drive/by_user.h"

#include "widgets/reachable.h"

namespace vorek::drive {

UserTarget::UserTarget(Control& control) : root(control.Root()), path(FullPath(control)) {}

bool CanReach(const Control& control) { return IsSeen(control) && IsOpen(control); }

void MustBeDone(bool done, const Words& words) {
  if (done) return;
  Refuse("a user can't do this: " + words[0] + " " + words[1] +
         " (hidden, disabled, locked, or of another kind)");
}

}  // namespace vorek::drive
