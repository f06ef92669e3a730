#ifndef VOREK_TOTALS_SELECTION_FIGURES_H_
#define VOREK_TOTALS_SELECTION_FIGURES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/report_context.h"
#include "text/cell_text.h"
#include "totals/fixed_total.h"

namespace vorek {

// What is told of the selected cells. The texts are as a grid shows money, or times; they are empty
// where no figure can be given exactly: without numbers, where times and numbers are mixed, for a
// number with more than four decimals or beyond a fixed-point value.
struct SelectionFigures {
  std::int64_t rows = 0;
  std::int64_t numbers = 0;
  std::string sum;
  std::string average;  // with two decimals, rounded away from zero at the half
  std::string least;
  std::string greatest;
};

// What the cells of a column count as.
enum class FigureKind { kNone, kNumber, kTime };

// A column of flxMain is what its field is; one without a field is read cell by cell as numbers.
FigureKind FigureKindOf(const ReportState& state, std::int32_t column);

// Goes through the selection of the grid on view, piece by piece. Hidden rows and the rows of sums
// and averages don't count, nor do subtotals beside the rows that they sum. Texts and dates are no
// numbers; nor are codes that their field holds as a text. Figures of a grid that
// has changed meanwhile are those of no selection: the caller begins anew.
class SelectionScan {
 public:
  // columns: those of the selection as the user sees it.
  SelectionScan(const ReportContext& report, const std::vector<std::int32_t>& columns);
  // The selection's own columns, from its first to its last.
  explicit SelectionScan(const ReportContext& report);

  // Reads some rows more; true when all are read.
  bool Step(std::int32_t rows);
  SelectionFigures Figures() const;

 private:
  using Kind = FigureKind;
  struct Column {
    std::int32_t number = 0;
    Kind kind = Kind::kNone;
    bool fixed = false;  // its cells are exact numbers of the result, or empty
  };
  struct Tally {
    std::int64_t rows = 0;
    std::int64_t numbers = 0;
    bool exact = true;
    bool has_times = false;
    bool has_numbers = false;
    FixedTotal total;
    FixedPoint least = 0;
    FixedPoint greatest = 0;
  };
  void ReadRow(std::int32_t row);
  void ReadCell(std::int32_t row, const Column& column, Tally& tally);
  bool ReadFixed(std::int32_t row, const Column& column, Tally& tally) const;
  static void Count(FixedPoint value, Kind kind, Tally& tally);

  const Grid& grid_;
  std::vector<Column> columns_;
  bool has_subtotals_ = false;
  bool heights_ = false;
  bool all_numbered_ = false;
  std::int32_t next_ = 0;
  std::int32_t last_ = 0;
  Tally data_;
  Tally subtotals_;
  std::string scratch_;
};

// All of it at once.
SelectionFigures FiguresOfSelection(const ReportContext& report);

// The number that a cell's text shows, digit for digit: groups of three digits between "/", a
// negative one in parentheses or with a sign, up to four decimals. False for anything else, as
// dates are, and beyond a fixed-point value.
bool ReadFigure(std::string_view text, FixedPoint& value);

}  // namespace vorek

#endif  // VOREK_TOTALS_SELECTION_FIGURES_H_
