#include "grid/grid_column.h"

#include <utility>

#include "text/cell_text.h"

namespace vorek {

std::string_view GridColumn::Stored(std::uint32_t handle) const {
  if (Covers(handle)) return written_.at(handle).View();
  const std::size_t slot = Slot(handle);
  return slot < cells_.size() ? cells_[slot].View() : std::string_view();
}

double GridColumn::Number(std::uint32_t handle) const {
  if (written_.empty() && Covers(handle)) return source_->Number(handle - 1);
  std::string scratch;
  return CellNumber(View(handle, scratch));
}

std::int64_t GridColumn::Fixed(std::uint32_t handle) const {
  if (IsSourced(handle)) return source_->Fixed(handle - 1);
  std::string scratch;
  return CellFixedPoint(View(handle, scratch));
}

bool GridColumn::SameText(std::uint32_t a, std::uint32_t b) const {
  if (IsSourced(a) && IsSourced(b)) return source_->SameText(a - 1, b - 1);
  std::string first;
  std::string second;
  return View(a, first) == View(b, second);
}

void GridColumn::Write(std::uint32_t handle, std::string_view text, TextArena& arena) {
  if (Covers(handle)) {
    written_.insert_or_assign(handle, Cell(text, arena));
    // A map entry costs about three stored cells.
    if (written_.size() > 1024 + source_->Size() / 8) Materialise(arena);
    return;
  }
  const std::size_t slot = Slot(handle);
  if (slot >= cells_.size()) {
    if (text.empty()) return;
    cells_.resize(slot + 1);
  }
  cells_[slot] = Cell(text, arena);
}

void GridColumn::Show(std::shared_ptr<const TextSource> source) {
  Clear();
  source_ = std::move(source);
  covered_ = static_cast<std::uint32_t>(source_->Size());
}

const TextSource* GridColumn::Source() const { return written_.empty() ? source_.get() : nullptr; }

void GridColumn::Materialise(TextArena& arena) {
  const std::size_t covered = source_->Size();
  std::vector<Cell> all(covered + (cells_.empty() ? 1 : cells_.size()));
  std::string scratch;
  for (std::uint32_t handle = 0; handle < all.size(); ++handle) {
    all[handle] = Cell(View(handle, scratch), arena);
  }
  cells_ = std::move(all);
  written_.clear();
  source_.reset();
  covered_ = 0;
}

void GridColumn::Clear() {
  source_.reset();
  covered_ = 0;
  cells_.clear();
  cells_.shrink_to_fit();
  written_.clear();
}

void GridColumn::KeepFirst(TextArena& arena) {
  std::string scratch;
  const Cell first(View(0, scratch), arena);
  Clear();
  if (!first.Empty()) cells_ = {first};
}

void GridColumn::Rehome(TextArena& arena) {
  for (Cell& cell : cells_) cell = Cell(cell.View(), arena);
  for (auto& [handle, cell] : written_) cell = Cell(cell.View(), arena);
}

std::size_t GridColumn::ArenaBytes() const {
  std::size_t bytes = 0;
  for (const Cell& cell : cells_) bytes += cell.ArenaBytes();
  for (const auto& [handle, cell] : written_) bytes += cell.ArenaBytes();
  return bytes;
}

std::size_t GridColumn::Memory() const {
  return cells_.capacity() * sizeof(Cell) + written_.size() * (sizeof(Cell) + 32);
}

}  // namespace vorek
