#ifndef VOREK_PRINT_GRID_PAGE_H_
#define VOREK_PRINT_GRID_PAGE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "grid/outline_mark.h"
#include "print/grid_print.h"

namespace vorek::print {

// Lays out one page of a grid.
class GridPage {
 public:
  GridPage(const GridPrint& print, std::size_t page);

  std::vector<DrawnItem> Draw();

 private:
  struct Look {
    Align align = Align::kRight;
    std::int32_t fill = -1;
    std::int32_t color = 0;
    bool bold = false;
  };
  using Total = std::string (ColumnTotals::*)(std::size_t page) const;

  void DrawHead();
  void DrawHeaders();
  void DrawRows();
  void DrawRow(std::int32_t row, double height);
  void DrawFills(const std::vector<Look>& looks, double height);
  void DrawCell(std::int32_t row, const SheetColumn& at, const Look& look, double height);
  void DrawOutlined(const OutlineMark& mark, const SheetColumn& at, const Look& look,
                    double height);
  void DrawTotals(const char* label, Total total);
  void DrawLines();
  void RuleColumns();
  void DrawFooter();
  Look LookOf(std::int32_t row, std::int32_t col) const;
  SheetColumn LabelPlace() const;
  const ColumnTotals* TotalsOf(std::int32_t column) const;

  double LeftOf(double before, double width) const;
  void Add(Item item, double before, std::string text = "");
  void AddText(const std::string& text, double before, double width, double height,
               const Look& look, double points);
  void AddFill(double before, double width, double height, std::int32_t color);
  void AddLine(double before, double top, double width, double height);
  void EndLine(double height);

  const GridPrint& print_;
  const Grid& grid_;
  const GridMeasures& measures_;
  const Sheet& sheet_;
  std::size_t page_;
  std::size_t band_;  // which of the pages down the grid
  double width_;      // of the sheet's columns
  double top_;        // where the next line goes
  double lines_top_ = 0;
  double ruled_from_ = 0;          // where the lines between the columns begin
  std::vector<double> line_ends_;  // below the rows that are drawn
  std::vector<DrawnItem> drawn_;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_GRID_PAGE_H_
