#ifndef VOREK_WIDGETS_REACHABLE_H_
#define VOREK_WIDGETS_REACHABLE_H_

#include <string>
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

// The path by which Find takes the control, with the frames that only hold others; "" for a root.
inline std::string FullPath(const Control& control) {
  const Control* const parent = control.Parent();
  if (parent == nullptr) return {};
  const std::string above = FullPath(*parent);
  return (above.empty() ? "" : above + ".") + control.PathName();
}

// The control of that path, if a user can do something with it; else null.
inline Control* Reachable(Control& root, std::string_view path) {
  Control* const control = root.Find(path);
  return control != nullptr && IsSeen(*control) && IsOpen(*control) ? control : nullptr;
}

}  // namespace vorek

#endif  // VOREK_WIDGETS_REACHABLE_H_
