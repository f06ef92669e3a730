#include "drill/general_class.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek {
namespace {

// Hours aren't looked at: a scroll an hour ago counts as one of this second.
bool SameSecond(const DateTime& a, const DateTime& b) {
  return a.minute == b.minute && a.second == b.second;
}

}  // namespace

GridScrollState* GeneralClass::Find(const Grid& grid) {
  const auto found = std::find_if(grids_.begin(), grids_.end(), [&](const GridScrollState& state) {
    return state.Name == grid.Name();
  });
  return found == grids_.end() ? nullptr : &*found;
}

void GeneralClass::setReport(const Grid& grid, std::int32_t) { Find(grid); }

void GeneralClass::AddReport(const Grid& grid, std::int32_t report_id) {
  if (GridScrollState* const state = Find(grid)) state->ReportID = report_id;
}

void GeneralClass::Add(const Grid& grid) {
  GridScrollState state;
  state.Name = grid.Name();
  grids_.push_back(state);
}

void GeneralClass::Scroll(const Grid& grid) {
  GridScrollState* const state = Find(grid);
  if (state == nullptr) return;
  state->LastScrollTime = clock_.Now();
  if (state->Restoring) return;
  state->PrevLeftCol = state->CurLeftCol;
  state->CurLeftCol = grid.LeftCol();
}

void GeneralClass::MouseDown(Grid& grid) {
  GridScrollState* const state = Find(grid);
  if (state == nullptr) return;
  if (SameSecond(clock_.Now(), state->LastScrollTime)) {
    Restore(*state, grid, state->PrevLeftCol);
    state->CurLeftCol = state->PrevLeftCol;
  } else {
    Restore(*state, grid, state->CurLeftCol);
    state->PrevLeftCol = state->CurLeftCol;
  }
}

// Setting the position raises Scroll, which the flag keeps out of the record.
void GeneralClass::Restore(GridScrollState& state, Grid& grid, std::int32_t left_col) {
  state.Restoring = true;
  IgnoreErrors([&] { grid.SetLeftCol(left_col); });
  state.Restoring = false;
}

}  // namespace vorek
