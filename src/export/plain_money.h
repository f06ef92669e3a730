#ifndef VOREK_EXPORT_PLAIN_MONEY_H_
#define VOREK_EXPORT_PLAIN_MONEY_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/report_context.h"

namespace vorek {

// True if the column holds digit-grouped texts: one cell has a group of three digits at its end,
// and none of four characters or more is without a "/".
bool LooksLikeMoney(const Grid& grid, std::int32_t column);

// The money columns of a report for the time of an export, which writes their cells without digit
// groups. Afterwards each of these cells stands in the grid in its money form, made once out of the
// text that was written: what isn't a number shows 0 then. The grid itself isn't touched meanwhile,
// save by TakeOut.
class PlainMoney {
 public:
  // Finds the columns, by the types of the fields, by the layouts of the cross table, and by their
  // texts on the grid on show.
  explicit PlainMoney(ReportContext& report);
  // Puts back what wasn't.
  ~PlainMoney();
  PlainMoney(const PlainMoney&) = delete;
  PlainMoney& operator=(const PlainMoney&) = delete;

  // The cell as it is written. REQUIRES: one of the report's grids. The view lives until the next
  // call with the same scratch.
  std::string_view Text(const Grid& grid, std::int32_t row, std::int32_t col,
                        std::string& scratch) const;
  // The same for whole columns: whether the column is one of them, and its cell in the row of that
  // handle, which isn't the header's.
  bool Takes(const Grid& grid, std::int32_t col) const {
    const Columns& columns = ColumnsOf(grid);
    return static_cast<std::size_t>(col) < columns.size() && columns[static_cast<std::size_t>(col)];
  }
  static std::string_view TextOf(const GridColumn& cells, std::uint32_t handle,
                                 std::string& scratch);
  // For a pass that reads the grid by itself: its cells hold what is written, until PutBack.
  void TakeOut();
  void PutBack();

 private:
  using Columns = std::vector<bool>;  // by grid column

  void TakeMoneyFields();
  void TakeCrossTable();
  void TakeMoneyTexts();
  const Columns& ColumnsOf(const Grid& grid) const {
    return &grid == &report_.flxMain ? main_ : transpose_;
  }

  ReportContext& report_;
  Columns main_;
  Columns transpose_;
  bool put_back_ = false;
};

// The grid that an export by texts and a filled template take: the cross table once it was built.
Grid& GridOnShow(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_EXPORT_PLAIN_MONEY_H_
