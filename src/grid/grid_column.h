#ifndef VOREK_GRID_GRID_COLUMN_H_
#define VOREK_GRID_GRID_COLUMN_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "grid/cell.h"
#include "grid/text_source.h"

namespace vorek {

// The texts of one column by row handle (see grid.h), with the column's measures. A column may show
// a source; then only cells that were written over it are stored, until they are so many that all
// of it is.
class GridColumn {
 public:
  std::int32_t width = kDefaultWidth;  // twips
  std::int32_t alignment = 1;
  std::int32_t fixed_alignment = kDefaultFixedAlignment;
  static constexpr std::int32_t kDefaultWidth = 1200;
  static constexpr std::int32_t kDefaultFixedAlignment = 4;

  // The view lives until the next write to the grid or the next call with the same scratch.
  std::string_view View(std::uint32_t handle, std::string& scratch) const {
    return IsSourced(handle) ? source_->View(handle - 1, scratch) : Stored(handle);
  }
  void Append(std::uint32_t handle, std::string& out) const {
    if (IsSourced(handle)) {
      source_->Append(handle - 1, out);
    } else {
      out += Stored(handle);
    }
  }
  // See Grid::CellPlain and Grid::IsNumber.
  std::string_view Plain(std::uint32_t handle, std::string& scratch) const {
    return IsSourced(handle) ? source_->Plain(handle - 1, scratch) : Stored(handle);
  }
  bool IsNumber(std::uint32_t handle) const { return IsSourced(handle) && source_->GivesNumbers(); }
  // The number that the text stands for, see CellNumber.
  double Number(std::uint32_t handle) const;
  std::int64_t Fixed(std::uint32_t handle) const;
  bool SameText(std::uint32_t a, std::uint32_t b) const;
  // True if the cell shows what the source gives.
  bool IsSourced(std::uint32_t handle) const {
    return Covers(handle) && (written_.empty() || written_.count(handle) == 0);
  }
  void Write(std::uint32_t handle, std::string_view text, TextArena& arena);

  // Shows the source's records in the handles from 1 on. Drops all texts.
  void Show(std::shared_ptr<const TextSource> source);
  // The source if all of its records are still shown as it gives them, else null.
  const TextSource* Source() const;
  // The source of those cells that weren't written over; null without one.
  const TextSource* AnySource() const { return source_.get(); }
  // Shows the same records through another source, keeping the texts that were written. REQUIRES:
  // there is a source, and the sizes are equal.
  void Exchange(std::shared_ptr<const TextSource> source) { source_ = std::move(source); }

  void Clear();
  // Drops all but the text of handle 0.
  void KeepFirst(TextArena& arena);
  // Moves the stored long texts into another arena.
  void Rehome(TextArena& arena);
  // Bytes that the stored texts take in the arena.
  std::size_t ArenaBytes() const;
  std::size_t Memory() const;

 private:
  bool Covers(std::uint32_t handle) const { return handle - 1 < covered_; }
  // Where in cells_ a handle lies that the source doesn't cover.
  std::size_t Slot(std::uint32_t handle) const { return handle == 0 ? handle : handle - covered_; }
  // The text of a cell that doesn't show the source.
  std::string_view Stored(std::uint32_t handle) const;
  void Materialise(TextArena& arena);

  std::shared_ptr<const TextSource> source_;
  std::uint32_t covered_ = 0;                        // handles from 1 on; 0 without a source
  std::vector<Cell> cells_;                          // of handles that the source doesn't cover
  std::unordered_map<std::uint32_t, Cell> written_;  // over the source
};

}  // namespace vorek

#endif  // VOREK_GRID_GRID_COLUMN_H_
