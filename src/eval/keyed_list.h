#ifndef VOREK_EVAL_KEYED_LIST_H_
#define VOREK_EVAL_KEYED_LIST_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {

// Items in the order of their insertion, each under a key that is looked up without regard to case.
// Positions count from 1; a removal closes the gap.
template <typename Item>
class KeyedList {
 public:
  // No effect if the key is there. Returns true if the item was added.
  bool Add(std::string_view key, Item item) {
    std::string upper = text::ToUpper(key);
    if (positions_.count(upper) > 0) return false;
    // All of it or nothing: what follows the entry needs no memory.
    MakeRoom(keys_);
    MakeRoom(items_);
    positions_.emplace(upper, items_.size() + 1);
    keys_.push_back(std::move(upper));
    items_.push_back(std::move(item));
    return true;
  }

  // 0 if there is none.
  std::size_t Position(std::string_view key) const {
    const auto found = positions_.find(text::ToUpper(key));
    return found == positions_.end() ? 0 : found->second;
  }

  // A number as it counts here, rounded to a whole one; 0 outside the list.
  std::size_t Position(double number) const {
    const double rounded = text::RoundHalfEven(number);
    const bool inside = rounded >= 1 && rounded <= static_cast<double>(items_.size());
    return inside ? static_cast<std::size_t>(rounded) : 0;
  }

  // REQUIRES: 1 <= position <= Size().
  Item& At(std::size_t position) { return items_[position - 1]; }
  const Item& At(std::size_t position) const { return items_[position - 1]; }
  const std::string& Key(std::size_t position) const { return keys_[position - 1]; }

  void Remove(std::size_t position) {
    std::unordered_map<std::string, std::size_t> positions;
    for (std::size_t i = 1; i <= keys_.size(); ++i) {
      if (i != position) positions.emplace(keys_[i - 1], i < position ? i : i - 1);
    }
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position - 1));
    keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(position - 1));
    positions_ = std::move(positions);
  }

  void Clear() {
    items_.clear();
    keys_.clear();
    positions_.clear();
  }

  std::size_t Size() const { return items_.size(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  template <typename Value>
  static void MakeRoom(std::vector<Value>& list) {
    if (list.size() == list.capacity()) list.reserve(list.size() * 2 + 4);
  }

  std::vector<Item> items_;
  std::vector<std::string> keys_;
  std::unordered_map<std::string, std::size_t> positions_;
};

}  // namespace vorek

#endif  // VOREK_EVAL_KEYED_LIST_H_
