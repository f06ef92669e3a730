#ifndef VOREK_GRID_CELL_H_
#define VOREK_GRID_CELL_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vorek {

// Holds the long texts of a grid until it is dropped whole. A text that was stored a moment ago is
// stored once.
class TextArena {
 public:
  // The view lives as long as the arena.
  std::string_view Store(std::string_view text);
  std::size_t Used() const { return used_; }

 private:
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t room_ = 0;
  char* next_ = nullptr;
  std::size_t used_ = 0;
  std::array<std::string_view, 1024> recent_;
};

// The text of one cell in 16 bytes: up to 15 bytes stand inline, a longer text in the arena.
class Cell {
 public:
  Cell() = default;
  // The cell must not outlive the arena.
  Cell(std::string_view text, TextArena& arena);

  std::string_view View() const;
  bool Empty() const { return bytes_[kLast] == 0; }
  std::size_t ArenaBytes() const { return bytes_[kLast] == kLong ? View().size() : 0; }

 private:
  static constexpr std::size_t kLast = 15;
  static constexpr char kLong = 16;

  // The last byte is the length of an inline text, or kLong: then a pointer and a 32-bit length
  // stand at the front.
  alignas(8) std::array<char, 16> bytes_{};
};
static_assert(sizeof(Cell) == 16);

}  // namespace vorek

#endif  // VOREK_GRID_CELL_H_
