#ifndef VOREK_ADAPTERS_QT_GRID_ACCESSIBLE_H_
#define VOREK_ADAPTERS_QT_GRID_ACCESSIBLE_H_

#include "adapters/qt/grid_area.h"

// Reads grids out: each is a table, its cells with their headers are made while a reader asks.
namespace vorek::qt {

// Makes Qt know grids; more than one call has no effect.
void InstallGridAccessibility();

// Tells a screen reader that another cell is the current one.
void TellSelection(GridArea& area);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_GRID_ACCESSIBLE_H_
