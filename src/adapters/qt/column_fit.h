#ifndef VOREK_ADAPTERS_QT_COLUMN_FIT_H_
#define VOREK_ADAPTERS_QT_COLUMN_FIT_H_

#include <QFont>
#include <cstdint>

#include "grid/grid.h"

namespace vorek::qt {

// The pixels that a column needs to show its header and its texts whole. Of a column with very many
// texts only the longest are measured.
int FittingPixels(const Grid& grid, std::int32_t col, const QFont& font);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_COLUMN_FIT_H_
