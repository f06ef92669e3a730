#ifndef VOREK_DRILL_GENERAL_CLASS_H_
#define VOREK_DRILL_GENERAL_CLASS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/grid.h"
#include "vorek/clock.h"

namespace vorek {

// What is kept of one grid.
struct GridScrollState {
  std::string Name;
  std::int32_t CurLeftCol = 1;   // after the last scroll
  std::int32_t PrevLeftCol = 1;  // before it
  bool Restoring = false;        // the class itself moves the grid
  DateTime LastScrollTime;
  std::int32_t ReportID = 0;
};

// Keeps the horizontal position of grids: a press that makes a grid scroll sideways by itself moves
// the column away under the pointer, and is undone here. Grids are known by their names; every
// member but Clear and Add does nothing for a grid that wasn't added, and none throws.
class GeneralClass {
 public:
  // The clock must outlive it.
  explicit GeneralClass(const Clock& clock) : clock_(clock) {}

  // Reads the grid's record and changes nothing.
  void setReport(const Grid& grid, std::int32_t report_id);
  void AddReport(const Grid& grid, std::int32_t report_id);
  void Clear() { grids_.clear(); }
  // A second record for one name is never used.
  void Add(const Grid& grid);
  // The grid is pressed: a scroll in the same second is taken back, an earlier one holds.
  void MouseDown(Grid& grid);
  // The grid has scrolled.
  void Scroll(const Grid& grid);

 private:
  GridScrollState* Find(const Grid& grid);
  static void Restore(GridScrollState& state, Grid& grid, std::int32_t left_col);

  const Clock& clock_;
  std::vector<GridScrollState> grids_;
};

}  // namespace vorek

#endif  // VOREK_DRILL_GENERAL_CLASS_H_
