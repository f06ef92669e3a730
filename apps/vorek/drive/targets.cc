#include "drive/targets.h"

#include <algorithm>
#include <vector>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/form.h"
#include "widgets/property.h"

namespace vorek::drive {
namespace {

// A path begins at the root's own name, or at any control below it.
Control* FindIn(Control& root, const std::string& path) {
  const std::size_t dot = path.find('.');
  if (!text::EqualsIgnoreCase(path.substr(0, dot), root.Name())) return root.Find(path);
  return root.Find(dot == std::string::npos ? "" : path.substr(dot + 1));
}

// A form that shows by the head of a path.
Form* FormOf(const Stage& stage, const std::string& head) {
  const std::size_t open = head.find('(');
  const bool counted = open != std::string::npos && head.ends_with(')');
  if (!counted) return stage.FormNamed(head, 0);
  const auto number =
      property::FromText<std::int32_t>(head.substr(open + 1, head.size() - open - 2));
  return number < 1 ? nullptr
                    : stage.FormNamed(head.substr(0, open), static_cast<std::size_t>(number));
}

Control* FindInForm(const Stage& stage, const std::string& path) {
  const std::size_t dot = std::min(path.find('.'), path.size());
  Form* const form = FormOf(stage, path.substr(0, dot));
  return form == nullptr || dot == path.size() ? form : form->Find(path.substr(dot + 1));
}

// In the order in which they are searched.
std::vector<Control*> Roots(Session& session) {
  const Stage& stage = *session.stage;
  std::vector<Control*> roots;
  if (stage.TopForm() != nullptr) roots.push_back(stage.TopForm());
  roots.push_back(&session.Report().Root());
  roots.insert(roots.end(), stage.OpenForms().rbegin(), stage.OpenForms().rend());
  return roots;
}

}  // namespace

Control& FindControl(Session& session, const std::string& path) {
  if (Control* const control = FindInForm(*session.stage, path)) return *control;
  for (Control* const root : Roots(session)) {
    if (Control* const control = FindIn(*root, path)) return *control;
  }
  throw Error(ErrorNumber::kItemNotFound, "there is no control " + path);
}

Grid& FindGrid(Session& session, const Words& words) {
  auto* const grid = dynamic_cast<Grid*>(&FindControl(session, Word(words, 1)));
  if (grid == nullptr) Refuse(words[1] + " is no grid");
  return *grid;
}

}  // namespace vorek::drive
