#ifndef VOREK_WIDGETS_REACHABLE_H_
#define VOREK_WIDGETS_REACHABLE_H_

#include <string_view>

#include "widgets/control.h"

namespace vorek {

// Whether a window would show the control, and take its user's doings: with all that it stands in,
// but for the root, which a screen shows by its own means.
inline bool IsSeen(const Control& control) {
  if (control.Parent() == nullptr) return true;
  return control.Visible() && IsSeen(*control.Parent());
}

inline bool IsOpen(const Control& control) {
  if (control.Parent() == nullptr) return true;
  return control.Enabled() && IsOpen(*control.Parent());
}

// The control of that path, if a user can do something with it; else null.
inline Control* Reachable(Control& root, std::string_view path) {
  Control* const control = root.Find(path);
  return control != nullptr && IsSeen(*control) && IsOpen(*control) ? control : nullptr;
}

}  // namespace vorek

#endif  // VOREK_WIDGETS_REACHABLE_H_
