#ifndef VOREK_GRID_COLUMN_VIEW_H_
#define VOREK_GRID_COLUMN_VIEW_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/grid.h"

namespace vorek {

// A column as a user arranged it: it is meant as long as the column of that number has that header.
struct NamedColumn {
  std::int32_t col = 0;
  std::string header;
  bool hidden = false;
  bool operator==(const NamedColumn&) const = default;
};

// How a user wants the columns of a grid; nothing for as the report has them.
struct ColumnWishes {
  std::vector<NamedColumn> order;  // all columns but the fixed ones, in the wished order
  std::int32_t frozen = 0;         // how many of those shown stand still at the beginning
  bool operator==(const ColumnWishes&) const = default;
};

// In which order the columns of a grid are shown, which are hidden, and which stand still beside
// the fixed ones. The grid's columns keep their numbers: nothing but the view changes. Places count
// from 0 behind the fixed columns.
class ColumnView {
 public:
  explicit ColumnView(const Grid& grid) : grid_(grid) {}

  // Columns, widths or headers may be others now.
  void Invalidate() { known_ = false; }

  // The columns that are shown, in their order: not those that are hidden or have no width.
  const std::vector<std::int32_t>& Shown() const;
  // How many of them, at the beginning, stand still: never all.
  std::int32_t Frozen() const;
  // The place of a column; of one that isn't shown that of the next that stands in the grid, or
  // Shown().size().
  std::int32_t PlaceOf(std::int32_t col) const;
  // The columns that a selection from the one to the other takes in, as it is seen.
  std::vector<std::int32_t> Between(std::int32_t from, std::int32_t to) const;
  bool IsHidden(std::int32_t col) const;

  // Nothing is done to the last column that is shown.
  void Hide(std::int32_t col);
  void Show(std::int32_t col);
  // By so many places to the end, or to the beginning if that is below 0.
  void Move(std::int32_t col, std::int32_t by);
  // The columns up to that one stand still; -1 lets all of them scroll.
  void FreezeTo(std::int32_t col);

  const ColumnWishes& Wishes() const { return wishes_; }
  void SetWishes(ColumnWishes wishes);

 private:
  bool IsMeant(const NamedColumn& wish) const;
  void Name();
  NamedColumn* Find(std::int32_t col);

  const Grid& grid_;
  ColumnWishes wishes_;
  mutable bool known_ = false;
  mutable std::vector<std::int32_t> shown_;
};

}  // namespace vorek

#endif  // VOREK_GRID_COLUMN_VIEW_H_
