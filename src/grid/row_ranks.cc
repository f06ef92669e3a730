#include "grid/row_ranks.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>
#include <string>

#include "text/collation.h"

namespace vorek {
namespace {

// A distinct text with the first sixteen bytes of its key as numbers; all keys stand in one buffer.
struct KeyedText {
  std::uint64_t head;
  std::uint64_t next;
  std::uint32_t id;
};

// Eight bytes as a number of the same order.
std::uint64_t WordAt(std::string_view key, std::size_t begin) {
  std::uint64_t word = 0;
  for (std::size_t i = begin; i < begin + 8; ++i) {
    word = (word << 8U) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return word;
}

// Asks at every so many steps of a work that has no rows to count.
class AskNowAndThen {
 public:
  explicit AskNowAndThen(const RowRanks::Ask& ask) : ask_(ask) {}
  void Step() {
    if (++steps_ % kStepsBetweenQuestions == 0) ask_();
  }

 private:
  static constexpr std::uint32_t kStepsBetweenQuestions = 65536;
  const RowRanks::Ask& ask_;
  std::uint32_t steps_ = 0;
};

}  // namespace

RowRanks::RowRanks(std::size_t rows, bool keeps_equal) : slots_(1024), keeps_equal_(keeps_equal) {
  ids_.reserve(rows);
}

std::uint32_t RowRanks::Add(std::string_view text, bool stays) {
  // Neighbours are often equal.
  if (!ids_.empty() && texts_[ids_.back()] == text) {
    ids_.push_back(ids_.back());
    return ids_.back();
  }
  std::size_t slot = 0;
  if (looks_up_) slot = SlotOf(text, std::hash<std::string_view>{}(text));
  if (!looks_up_ || slots_[slot] == 0) {
    ids_.push_back(static_cast<std::uint32_t>(texts_.size()));
    texts_.push_back(stays ? text : copies_.Store(text));
    if (looks_up_) Remember(slot);
  } else {
    ids_.push_back(slots_[slot] - 1);
  }
  return ids_.back();
}

// Where nearly every text is its own, looking for equal ones costs more than it saves.
void RowRanks::Remember(std::size_t slot) {
  slots_[slot] = static_cast<std::uint32_t>(texts_.size());
  if (texts_.size() * 2 > slots_.size()) Grow();
  constexpr std::size_t kSample = 65536;
  looks_up_ = keeps_equal_ || ids_.size() != kSample || texts_.size() < kSample / 8 * 7;
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

std::vector<std::uint32_t> RowRanks::Ranks(bool ignore_case, bool descending, const Ask& ask) {
  AskNowAndThen asking(ask);
  std::string keys;
  std::size_t bytes = 0;
  for (const std::string_view text : texts_) bytes += text.size();
  keys.reserve(bytes);
  std::vector<std::size_t> ends;
  ends.reserve(texts_.size());
  for (const std::string_view text : texts_) {
    asking.Step();
    text::AppendSortKey(text, ignore_case, keys);
    ends.push_back(keys.size());
  }
  // The keys take their place.
  std::vector<std::string_view>().swap(texts_);
  const auto key = [&](std::uint32_t id) {
    const std::size_t begin = id == 0 ? 0 : ends[id - 1];
    return std::string_view(keys).substr(begin, ends[id] - begin);
  };
  std::vector<KeyedText> order;
  order.reserve(ends.size());
  for (std::uint32_t id = 0; id < ends.size(); ++id) {
    order.push_back({WordAt(key(id), 0), WordAt(key(id), 8), id});
  }
  std::sort(order.begin(), order.end(), [&](const KeyedText& a, const KeyedText& b) {
    asking.Step();
    if (a.head != b.head) return a.head < b.head;
    return a.next != b.next ? a.next < b.next : key(a.id) < key(b.id);
  });
  std::vector<std::uint32_t> ranks(ends.size());
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

std::vector<std::uint32_t> RowRanks::Sorted(bool ignore_case, bool descending, const Ask& ask) {
  std::vector<std::uint32_t>().swap(slots_);
  const std::vector<std::uint32_t> ranks = Ranks(ignore_case, descending, ask);
  std::vector<std::uint32_t> begins(ranks.size() + 1, 0);
  for (const std::uint32_t id : ids_) ++begins[ranks[id] + 1];
  for (std::size_t i = 1; i < begins.size(); ++i) begins[i] += begins[i - 1];
  std::vector<std::uint32_t> sorted(ids_.size());
  for (std::uint32_t row = 0; row < ids_.size(); ++row) {
    sorted[begins[ranks[ids_[row]]]++] = row;
  }
  return sorted;
}

namespace {

// The bits of a double as a number of the same order; -0 is 0.
std::uint64_t OrderedBits(double number, bool descending) {
  const auto bits = std::bit_cast<std::uint64_t>(number + 0.0);
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
  const std::uint64_t ordered = (bits & kSign) != 0 ? ~bits : bits | kSign;
  return descending ? ~ordered : ordered;
}

struct NumberKey {
  std::uint64_t bits;
  std::uint32_t place;
};

// One step of a radix sort, by eleven bits from `shift` on.
void SortByDigit(std::vector<NumberKey>& keys, std::vector<NumberKey>& room, unsigned shift) {
  constexpr std::uint64_t kDigits = 2048;
  std::vector<std::size_t> begins(kDigits + 1, 0);
  for (const NumberKey& key : keys) ++begins[((key.bits >> shift) & (kDigits - 1)) + 1];
  // Nothing moves where all have the same digit.
  if (std::find(begins.begin(), begins.end(), keys.size()) != begins.end()) return;
  for (std::size_t digit = 1; digit <= kDigits; ++digit) begins[digit] += begins[digit - 1];
  for (const NumberKey& key : keys) room[begins[(key.bits >> shift) & (kDigits - 1)]++] = key;
  keys.swap(room);
}

}  // namespace

std::vector<std::uint32_t> SortedNumbers(const std::vector<double>& numbers, bool descending) {
  std::vector<NumberKey> keys;
  keys.reserve(numbers.size());
  for (const double number : numbers) {
    keys.push_back({OrderedBits(number, descending), static_cast<std::uint32_t>(keys.size())});
  }
  constexpr std::size_t kFew = 4096;
  if (keys.size() < kFew) {
    std::stable_sort(keys.begin(), keys.end(),
                     [](const NumberKey& a, const NumberKey& b) { return a.bits < b.bits; });
  } else {
    std::vector<NumberKey> room(keys.size());
    for (unsigned shift = 0; shift < 64; shift += 11) SortByDigit(keys, room, shift);
  }
  std::vector<std::uint32_t> sorted;
  sorted.reserve(keys.size());
  for (const NumberKey& key : keys) sorted.push_back(key.place);
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
