#include "widgets/vorek_multi_select.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>
#include <utility>

#include "text/utf8.h"
#include "vorek/error.h"
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

// The pieces of a list with commas, without those that are blank.
std::vector<std::string> Pieces(const std::string& typed) {
  const std::string list = text::Replace(typed, "،", ",");
  std::vector<std::string> pieces;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t comma = std::min(list.find(',', at), list.size());
    std::string piece = text::Trim(list.substr(at, comma - at));
    if (!piece.empty()) pieces.push_back(std::move(piece));
    at = comma + 1;
  }
  return pieces;
}

}  // namespace

void VorekMultiSelect::Choose(std::int32_t index) {
  if (!Enabled()) return;
  const std::int32_t id = At(index).id;
  if (all_) {
    Take(AllBut(id), false);
    return;
  }
  std::vector<std::int32_t> ids = ids_;
  if (std::erase(ids, id) == 0) ids.push_back(id);
  Take(std::move(ids), false);
}

std::vector<std::int32_t> VorekMultiSelect::AllBut(std::int32_t id) {
  const std::vector<ListRow> rows = Read({}, kMostChosen + 1);
  if (rows.size() > kMostChosen) {
    throw Error(ErrorNumber::kInvalidCall,
                "فهرست بيش از " + std::to_string(kMostChosen) +
                    " سطر دارد: به جاي كنار گذاشتن چند سطر، سطرهاي خواسته را برگزينيد");
  }
  std::vector<std::int32_t> ids;
  for (const ListRow& row : rows) {
    if (row.id != id) ids.push_back(row.id);
  }
  return ids;
}

std::string VorekMultiSelect::TakeTyped(const std::string& typed) {
  const std::string plain = PlainTyped(typed);
  if (plain == "*" || plain == "همه") {
    SelectAll();
    return {};
  }
  std::vector<std::int32_t> ids;
  for (const std::string& piece : Pieces(plain)) {
    std::string reason;
    const std::int32_t key = ParseKey(piece);
    const auto row = RowTyped(key != 0 ? "#" + std::to_string(key) : piece, reason);
    if (!row) return reason;
    if (std::find(ids.begin(), ids.end(), row->id) == ids.end()) ids.push_back(row->id);
  }
  Take(std::move(ids), false);
  FillList();
  return {};
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
  for (const std::string& piece : Pieces(text)) {
    const std::int32_t id = ParseKey(piece);
    if (id != 0 && seen.insert(id).second) ids.push_back(id);
  }
  Take(std::move(ids), false);
}

void VorekMultiSelect::Take(std::vector<std::int32_t> ids, bool all) {
  DropRefusal();
  if (ids == ids_ && all == all_) return;
  ids_ = std::move(ids);
  all_ = all;
  Changed("SelectedIDs");
  if (on_change) on_change();
}

const PropertyTable& VorekMultiSelect::OwnProperties() const {
  using property::ReadOnly;
  using property::ReadWrite;
  static const PropertyTable table = property::Join(
      {ReadWrite("SelectedIDs", &VorekMultiSelect::SelectedIDs, &VorekMultiSelect::SetSelectedIDs),
       ReadWrite("AllSelected", &VorekMultiSelect::AllSelected, &VorekMultiSelect::SetAllSelected),
       ReadOnly("NoneSelected", &VorekMultiSelect::NoneSelected)},
      ListControl::OwnProperties());
  return table;
}

}  // namespace vorek
