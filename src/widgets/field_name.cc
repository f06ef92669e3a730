#include "widgets/field_name.h"

#include <cstdlib>
#include <limits>

#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();

std::int64_t MiddleOf(const Control& control) { return control.Top() + control.Height() / 2; }

// In twips. Forms read from the right: a label at the left of its field counts as twice as far. One
// on the line is nearer than any above, unless it stands at another place of a wide form.
std::int64_t Distance(const Control& field, const Control& label) {
  const bool on_line = std::abs(MiddleOf(field) - MiddleOf(label)) <= field.Height() / 2;
  const std::int64_t right = label.Left() - (field.Left() + field.Width());
  const std::int64_t left = field.Left() - (label.Left() + label.Width());
  if (on_line) return right >= left ? right : 2 * left;
  const std::int64_t above = field.Top() - (label.Top() + label.Height());
  constexpr std::int64_t kLine = 10'000;
  return above < -field.Height() / 2 ? kFar : kLine + std::abs(above);
}

std::string CaptionOf(const Control* container) {
  const auto* const captioned = dynamic_cast<const CaptionControl*>(container);
  return captioned == nullptr ? "" : text::Trim(captioned->Caption());
}

std::string NameByPlace(const Control& field) {
  std::string name = CaptionOf(field.Parent());
  std::int64_t nearest = kFar;
  for (const Control* const sibling : field.Parent()->Children()) {
    const auto* const label = dynamic_cast<const Label*>(sibling);
    if (label == nullptr || text::Trim(label->Caption()).empty()) continue;
    const std::int64_t distance = Distance(field, *label);
    if (distance >= nearest) continue;
    nearest = distance;
    name = text::Trim(label->Caption());
  }
  return name;
}

}  // namespace

const Label* TiedLabel(const Control& control) {
  if (control.Tag().empty() || control.Parent() == nullptr) return nullptr;
  for (const Control* const sibling : control.Parent()->Children()) {
    const auto* const label = dynamic_cast<const Label*>(sibling);
    if (label != nullptr && label != &control && label->Tag() == control.Tag()) return label;
  }
  return nullptr;
}

std::string FieldName(const Control& field) {
  if (field.Parent() == nullptr) return "";
  const Label* const tied = TiedLabel(field);
  const std::string said = tied == nullptr ? "" : text::Trim(tied->Caption());
  return said.empty() ? NameByPlace(field) : said;
}

}  // namespace vorek
