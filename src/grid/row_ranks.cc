#include "grid/row_ranks.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>

#include "text/collation.h"

namespace vorek {
namespace {

// A distinct text with its key: the first eight bytes as a number, the rest in a common buffer.
struct KeyedText {
  std::uint64_t head;
  std::uint32_t id;
};

std::uint64_t HeadOf(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    head = (head << 8U) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return head;
}

}  // namespace

RowRanks::RowRanks(std::size_t rows) : slots_(1024) { ids_.reserve(rows); }

std::uint32_t RowRanks::Add(std::string_view text, bool stays) {
  // Neighbours are often equal.
  if (!ids_.empty() && texts_[ids_.back()] == text) {
    ids_.push_back(ids_.back());
    return ids_.back();
  }
  const std::size_t slot = SlotOf(text, std::hash<std::string_view>{}(text));
  if (slots_[slot] == 0) {
    texts_.push_back(stays ? text : copies_.Store(text));
    slots_[slot] = static_cast<std::uint32_t>(texts_.size());
  }
  ids_.push_back(slots_[slot] - 1);
  if (texts_.size() * 2 > slots_.size()) Grow();
  return ids_.back();
}

std::size_t RowRanks::SlotOf(std::string_view text, std::size_t hash) const {
  std::size_t slot = hash & (slots_.size() - 1);
  while (slots_[slot] != 0 && texts_[slots_[slot] - 1] != text) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

void RowRanks::Grow() {
  slots_.assign(slots_.size() * 4, 0);
  for (std::size_t id = 0; id < texts_.size(); ++id) {
    const std::string_view text = texts_[id];
    slots_[SlotOf(text, std::hash<std::string_view>{}(text))] = static_cast<std::uint32_t>(id) + 1;
  }
}

std::vector<std::uint32_t> RowRanks::Ranks(bool ignore_case, bool descending) const {
  std::string keys;
  std::vector<std::size_t> ends;
  std::vector<KeyedText> order;
  for (const std::string_view text : texts_) {
    const std::string key = text::SortKey(text, ignore_case);
    order.push_back({HeadOf(key), static_cast<std::uint32_t>(order.size())});
    keys += key;
    ends.push_back(keys.size());
  }
  const auto key = [&](std::uint32_t id) {
    const std::size_t begin = id == 0 ? 0 : ends[id - 1];
    return std::string_view(keys).substr(begin, ends[id] - begin);
  };
  std::sort(order.begin(), order.end(), [&](const KeyedText& a, const KeyedText& b) {
    return a.head != b.head ? a.head < b.head : key(a.id) < key(b.id);
  });
  std::vector<std::uint32_t> ranks(texts_.size());
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && key(order[i].id) != key(order[i - 1].id)) ++rank;
    ranks[order[i].id] = rank;
  }
  if (descending) {
    for (std::uint32_t& value : ranks) value = rank - value;
  }
  return ranks;
}

std::vector<std::uint32_t> RowRanks::Sorted(bool ignore_case, bool descending) const {
  const std::vector<std::uint32_t> ranks = Ranks(ignore_case, descending);
  std::vector<std::uint32_t> begins(ranks.size() + 1, 0);
  for (const std::uint32_t id : ids_) ++begins[ranks[id] + 1];
  for (std::size_t i = 1; i < begins.size(); ++i) begins[i] += begins[i - 1];
  std::vector<std::uint32_t> sorted(ids_.size());
  for (std::uint32_t row = 0; row < ids_.size(); ++row) {
    sorted[begins[ranks[ids_[row]]]++] = row;
  }
  return sorted;
}

std::vector<std::int32_t> BehindFixedRows(std::int32_t fixed,
                                          const std::vector<std::uint32_t>& sorted) {
  std::vector<std::int32_t> rows(static_cast<std::size_t>(fixed) + sorted.size());
  std::iota(rows.begin(), rows.begin() + fixed, 0);
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    rows[i + static_cast<std::size_t>(fixed)] = static_cast<std::int32_t>(sorted[i]) + fixed;
  }
  return rows;
}

}  // namespace vorek
