#include "widgets/vorek_multi_select.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>
#include <utility>

#include "text/utf8.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// A whole number above 0 and nothing else; 0 for another text.
std::int32_t ParseKey(std::string_view piece) {
  const std::string plain = PlainTyped(piece);
  std::int32_t id = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), id);
  const bool whole = error == std::errc() && end == plain.data() + plain.size();
  return whole && id > 0 ? id : 0;
}

}  // namespace

void VorekMultiSelect::Choose(std::int32_t index) {
  if (!Enabled()) return;
  const std::int32_t id = At(index).id;
  std::vector<std::int32_t> ids = ids_;
  if (std::erase(ids, id) == 0) ids.push_back(id);
  Take(std::move(ids), false);
}

std::string VorekMultiSelect::SelectedIDs() const {
  std::string out;
  for (const std::int32_t id : ids_) {
    if (!out.empty()) out += ',';
    out += std::to_string(id);
  }
  return out;
}

bool VorekMultiSelect::IsSelected(std::int32_t id) const {
  return all_ || std::find(ids_.begin(), ids_.end(), id) != ids_.end();
}

void VorekMultiSelect::SetSelectedIDs(const std::string& text) {
  std::vector<std::int32_t> ids;
  std::unordered_set<std::int32_t> seen;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t comma = std::min(text.find(',', at), text.size());
    const std::int32_t id = ParseKey(std::string_view(text).substr(at, comma - at));
    if (id != 0 && seen.insert(id).second) ids.push_back(id);
    at = comma + 1;
  }
  Take(std::move(ids), false);
}

void VorekMultiSelect::Take(std::vector<std::int32_t> ids, bool all) {
  if (ids == ids_ && all == all_) return;
  ids_ = std::move(ids);
  all_ = all;
  Changed("SelectedIDs");
  if (on_change) on_change();
}

const PropertyTable& VorekMultiSelect::OwnProperties() const {
  using property::ReadOnly;
  using property::ReadWrite;
  static const PropertyTable table = JoinProperties(
      {ReadWrite("SelectedIDs", &VorekMultiSelect::SelectedIDs, &VorekMultiSelect::SetSelectedIDs),
       ReadWrite("AllSelected", &VorekMultiSelect::AllSelected, &VorekMultiSelect::SetAllSelected),
       ReadOnly("NoneSelected", &VorekMultiSelect::NoneSelected)},
      ListControl::OwnProperties());
  return table;
}

}  // namespace vorek
