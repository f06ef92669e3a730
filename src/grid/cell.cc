#include "grid/cell.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>

#include "vorek/error.h"

namespace vorek {

std::string_view TextArena::Store(std::string_view text) {
  std::string_view& recent = recent_[std::hash<std::string_view>{}(text) % recent_.size()];
  if (recent == text) return recent;
  if (text.size() > room_) {
    constexpr std::size_t kBlock = std::size_t{1} << 16U;
    room_ = std::max(kBlock, text.size());
    blocks_.push_back(std::make_unique<char[]>(room_));
    next_ = blocks_.back().get();
  }
  std::memcpy(next_, text.data(), text.size());
  recent = {next_, text.size()};
  next_ += text.size();
  room_ -= text.size();
  used_ += text.size();
  return recent;
}

Cell::Cell(std::string_view text, TextArena& arena) {
  if (text.size() <= kLast) {
    std::copy(text.begin(), text.end(), bytes_.begin());  // an empty view may have no address
    bytes_[kLast] = static_cast<char>(text.size());
    return;
  }
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw Error(ErrorNumber::kOverflow, "A cell's text is longer than 4 GB.");
  }
  const std::string_view stored = arena.Store(text);
  const char* const pointer = stored.data();
  const auto length = static_cast<std::uint32_t>(stored.size());
  std::memcpy(bytes_.data(), &pointer, sizeof(pointer));
  std::memcpy(bytes_.data() + sizeof(pointer), &length, sizeof(length));
  bytes_[kLast] = kLong;
}

std::string_view Cell::View() const {
  if (bytes_[kLast] != kLong) return {bytes_.data(), static_cast<std::size_t>(bytes_[kLast])};
  const char* pointer = nullptr;
  std::uint32_t length = 0;
  std::memcpy(&pointer, bytes_.data(), sizeof(pointer));
  std::memcpy(&length, bytes_.data() + sizeof(pointer), sizeof(length));
  return {pointer, length};
}

}  // namespace vorek
