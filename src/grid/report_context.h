#ifndef VOREK_GRID_REPORT_CONTEXT_H_
#define VOREK_GRID_REPORT_CONTEXT_H_

#include "grid/grid.h"
#include "state/notices.h"
#include "state/process.h"
#include "state/report_state.h"
#include "vorek/evaluation.h"
#include "widgets/basic_controls.h"

namespace vorek {

// What a pass over a report works on: the state of one control and its grids, and what all controls
// share. Made by the control, handed down by reference.
struct ReportContext {
  Process& process;
  ReportState& state;
  Grid& flxMain;
  Grid& flxTranspose;
  Notices& notices;
  EvaluationClass& Evaluation;           // of the control, for its calculated columns
  VorekProgressBar* Progress = nullptr;  // that a long pass moves; null for none

  // The grid that exports and keys work on: the one on view, but for a report that is to be spread
  // and has no column for it.
  Grid& ActiveGrid() const { return state.isTransposedResult ? flxTranspose : flxMain; }
  // The grid that a user sees.
  Grid& GridOnView() const { return flxTranspose.Visible() ? flxTranspose : flxMain; }
  ColumnLayoutTable& layouts() { return process.main.ColumnLayouts; }
  ColumnLayoutTable& transpose_layouts() { return process.main.TransposeLayouts; }
};

// Empties a grid to 2 rows and 2 columns, one of each fixed.
void ResetGrid(Grid& grid);

}  // namespace vorek

#endif  // VOREK_GRID_REPORT_CONTEXT_H_
