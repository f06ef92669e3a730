#ifndef VOREK_APPS_VOREK_GRID_WRITER_H_
#define VOREK_APPS_VOREK_GRID_WRITER_H_

#include <cstdint>
#include <ostream>
#include <string>

#include "cell_table.h"
#include "grid/grid.h"

namespace vorek {

// A grid's cells, column 0 first. The grid must outlive it.
class GridTable : public CellTable {
 public:
  explicit GridTable(const Grid& grid) : grid_(grid) {}

  std::size_t Rows() const override { return static_cast<std::size_t>(grid_.Rows()); }
  std::size_t Columns() const override { return static_cast<std::size_t>(grid_.Cols()); }
  std::optional<std::string_view> Cell(std::size_t row, std::size_t column,
                                       std::string& scratch) const override;
  bool LeftAligned(std::size_t column) const override;
  bool RowHidden(std::size_t row) const override;
  bool ColumnHidden(std::size_t column) const override;

 private:
  const Grid& grid_;
};

// One object: the report's number and title, the columns with their measures, the data rows.
void WriteJson(const Grid& grid, std::int32_t report_id, const std::string& title,
               std::ostream& out);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_GRID_WRITER_H_
