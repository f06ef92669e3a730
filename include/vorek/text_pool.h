#ifndef VOREK_TEXT_POOL_H_
#define VOREK_TEXT_POOL_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vorek {

// Holds the texts of one column, each known by a number of four bytes. A text that was added a
// moment ago is kept once. Up to 4 GB.
class TextPool {
 public:
  // Throws Error(kOutOfMemory) beyond its room.
  std::uint32_t Add(std::string_view text);
  // The view lives as long as the pool.
  std::string_view At(std::uint32_t place) const {
    const char* const at = blocks_[place >> kBlockBits].get() + (place & (kBlock - 1));
    const auto length = static_cast<unsigned char>(at[0]);
    return length == kLong ? LongAt(at) : std::string_view(at + 1, length);
  }
  std::size_t Memory() const { return bytes_; }

 private:
  static constexpr unsigned kBlockBits = 18;
  static constexpr std::size_t kBlock = std::size_t{1} << kBlockBits;
  static constexpr std::uint32_t kNone = UINT32_MAX;
  static constexpr unsigned char kLong = 0xFF;  // the length's own byte, of a text with another one

  std::uint32_t Store(std::string_view text);
  static std::string_view LongAt(const char* at);
  char* Room(std::size_t bytes, std::uint32_t& place);

  // A place is a block's number and where in it the text stands, its length in front. A text that
  // is longer than a block has one of its own size.
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t used_ = kBlock;  // of the last block
  std::size_t bytes_ = 0;
  std::array<std::uint32_t, 4096> recent_ = Empty();  // places by hash
  std::uint32_t added_ = 0;
  std::uint32_t found_ = 0;  // among the recent ones
  bool looks_ = true;

  static constexpr std::array<std::uint32_t, 4096> Empty() {
    std::array<std::uint32_t, 4096> places{};
    places.fill(kNone);
    return places;
  }
};

}  // namespace vorek

#endif  // VOREK_TEXT_POOL_H_
