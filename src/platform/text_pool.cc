#include "vorek/text_pool.h"

#include <algorithm>
#include <cstring>

#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::size_t kLength = sizeof(std::uint32_t);  // in front of a long text

std::uint64_t EightBytes(const char* from) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, from, sizeof(bytes));
  return bytes;
}

// Every bit of the two goes into the high bits of the result.
std::uint64_t Mixed(std::uint64_t hash, std::uint64_t bytes) {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
  hash ^= bytes;
  return (hash ^ (hash >> 32U)) * kOdd;
}

// Eight bytes at a time: cheaper than the standard hash for texts of a few words.
std::size_t QuickHash(std::string_view text) {
  constexpr std::size_t kEight = 8;
  std::uint64_t hash = text.size();
  if (text.size() >= kEight) {
    const std::size_t last = text.size() - kEight;
    for (std::size_t at = 0; at < last; at += kEight) {
      hash = Mixed(hash, EightBytes(text.data() + at));
    }
    hash = Mixed(hash, EightBytes(text.data() + last));
  } else {
    for (const char c : text) hash = Mixed(hash, static_cast<unsigned char>(c));
  }
  return static_cast<std::size_t>(Mixed(hash, 0) >> 48U);
}

}  // namespace

std::uint32_t TextPool::Add(std::string_view text) {
  if (!looks_) return Store(text);
  std::uint32_t& recent = recent_[QuickHash(text) % recent_.size()];
  ++added_;
  if (recent != kNone && At(recent) == text) {
    ++found_;
    return recent;
  }
  // Where hardly a text comes again, looking for it costs more than it saves.
  constexpr std::uint32_t kSample = 16384;
  looks_ = added_ != kSample || found_ > kSample / 16;
  recent = Store(text);
  return recent;
}

std::uint32_t TextPool::Store(std::string_view text) {
  const bool is_long = text.size() >= kLong;
  const std::size_t head = 1 + (is_long ? kLength : 0);
  std::uint32_t place = 0;
  char* const at = Room(head + text.size(), place);
  const auto length = static_cast<std::uint32_t>(text.size());
  at[0] = static_cast<char>(is_long ? kLong : length);
  if (is_long) std::memcpy(at + 1, &length, kLength);
  std::copy(text.begin(), text.end(), at + head);
  return place;
}

char* TextPool::Room(std::size_t bytes, std::uint32_t& place) {
  if (used_ + bytes > kBlock) {
    constexpr std::size_t kMostBlocks = (std::size_t{1} << (32 - kBlockBits)) - 1;
    if (blocks_.size() >= kMostBlocks || bytes > UINT32_MAX) {
      throw Error(ErrorNumber::kOutOfMemory, "حافظه كافي نيست.");
    }
    const std::size_t size = std::max(bytes, kBlock);
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
    bytes_ += size;
    used_ = 0;
  }
  place = static_cast<std::uint32_t>(((blocks_.size() - 1) << kBlockBits) + used_);
  char* const at = blocks_.back().get() + used_;
  used_ += bytes;
  return at;
}

std::string_view TextPool::LongAt(const char* at) {
  std::uint32_t length = 0;
  std::memcpy(&length, at + 1, kLength);
  return {at + 1 + kLength, length};
}

}  // namespace vorek
