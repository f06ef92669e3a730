#include "grid/expression_columns.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalog/report_row.h"
#include "eval/prepared_formula.h"
#include "grid/expression_formula.h"
#include "grid/summary_label.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

constexpr int kHourglass = 11;
// Below this, a number that was formatted as money reads back as it was.
constexpr double kReadsBack = 1e14;

// What the catalogue says of a calculated column.
struct ExpressionRow {
  std::string general;
  std::string first_row;
  std::int32_t just_show_positive = -1;  // 1 hides negative results, 0 positive ones, -1 none
};

ExpressionRow ReadExpression(const Recordset& slot) {
  ExpressionRow row;
  row.general = TextOf(slot, "GeneralExpression");
  const bool same = slot.Field("FirstRowExpression").IsNull();
  row.first_row = same ? row.general : TextOf(slot, "FirstRowExpression");
  const FieldValue positive = slot.Field("JustShowPositiveValue");
  if (positive.IsNull()) return row;
  row.just_show_positive =
      positive.Type() == kBoolean ? (positive.Flag() ? 1 : 0) : positive.Number();
  return row;
}

// The numbers that the formulas read, one for each grid column that a formula names, of the row in
// work and of the one above it. Calculated columns count 0 until they are filled.
class RowNumbers {
 public:
  explicit RowNumbers(std::int32_t columns)
      : places_(static_cast<std::size_t>(columns), kNowhere) {}

  std::size_t Place(std::int32_t column) {
    std::size_t& place = places_[static_cast<std::size_t>(column)];
    if (place == kNowhere) {
      place = columns_.size();
      columns_.push_back(column);
      now_.push_back(0);
      above_.push_back(0);
    }
    return place;
  }

  // Goes on to the next row. Columns from `calculated` on are read as 0.
  void Next(const Grid& grid, std::int32_t row, std::int32_t calculated) {
    std::swap(now_, above_);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      now_[i] = columns_[i] < calculated ? grid.CellValue(row, columns_[i]) : 0;
    }
  }
  void Write(std::int32_t column, double number) {
    const std::size_t place = places_[static_cast<std::size_t>(column)];
    if (place != kNowhere) now_[place] = number;
  }
  double Now(std::size_t place) const { return now_[place]; }
  double Above(std::size_t place) const { return above_[place]; }

 private:
  static constexpr std::size_t kNowhere = SIZE_MAX;

  std::vector<std::size_t> places_;    // by grid column
  std::vector<std::int32_t> columns_;  // by place
  std::vector<double> now_;
  std::vector<double> above_;
};

// A calculated column with its formula ready for each row below the first.
class ExpressionColumn {
 public:
  ExpressionColumn(ExpressionRow row, std::int32_t column, std::int32_t columns,
                   EvaluationClass& evaluation, RowNumbers& numbers)
      : row_(std::move(row)), column_(column), columns_(columns), evaluation_(evaluation) {
    std::optional<ReferenceTemplate> found = FindReferences(row_.general, columns);
    if (!found) return;
    for (const ColumnReference& reference : found->references) {
      sources_.push_back({numbers.Place(reference.column), reference.above});
    }
    values_.resize(sources_.size());
    prepared_.emplace(evaluation, std::move(found->formula));
  }

  // Fills the cell of the row.
  void Fill(Grid& grid, std::int32_t row, RowNumbers& numbers) {
    by_text_ = row == 1 || !prepared_;
    value_ = by_text_ ? EvaluateText(grid, row) : EvaluatePrepared(numbers);
    numbers.Write(column_, Show(value_));
    grid.WriteCell(row, column_, cell_);
  }

  // Puts the formula of the last row that was filled into the evaluator.
  void LeaveFormula() {
    if (!by_text_) evaluation_.Expresion(prepared_->Template().Fill(values_));
  }

  // How the cell that was filled last came about, if that is the one which is asked for.
  void Tell(CalculationTrace& trace, std::int32_t row) const {
    if (trace.row != row || trace.column != column_) return;
    trace.told = true;
    trace.formula = row == 1 ? row_.first_row : row_.general;
    trace.with_numbers = by_text_ ? evaluation_.Expresion() : prepared_->Template().Fill(values_);
    trace.value = value_;
    trace.code = evaluation_.CErr();
    trace.code_text = evaluation_.DErr();
    trace.cell = cell_;
  }

 private:
  struct Source {
    std::size_t place;
    bool above;
  };

  WorkingValue EvaluateText(const Grid& grid, std::int32_t row) {
    const std::string& formula = row == 1 ? row_.first_row : row_.general;
    evaluation_.Expresion(
        ReplaceReferences(formula, columns_, row == 1, [&](ColumnReference reference) {
          return grid.CellValue(reference.above ? row - 1 : row, reference.column);
        }));
    const DynamicValue value = evaluation_.AnalizaExpr();
    return value.IsNumber() ? WorkingValue(value.Number()) : std::nullopt;
  }

  WorkingValue EvaluatePrepared(const RowNumbers& numbers) {
    for (std::size_t i = 0; i < sources_.size(); ++i) {
      const Source& source = sources_[i];
      values_[i] = source.above ? numbers.Above(source.place) : numbers.Now(source.place);
    }
    return prepared_->Evaluate(values_);
  }

  // Sets the cell's text and gives the number that is read off it.
  double Show(const WorkingValue& value) {
    cell_.clear();
    if (!value) return 0;
    const double number = Hidden(*value) ? 0 : *value;
    if (number <= 0) {
      text::AppendPlainNumber(number, cell_);
      return number;
    }
    plain_.clear();
    text::AppendPlainNumber(number, plain_);
    // Beyond a fixed-point value the cell stays empty.
    if (!IgnoreErrors([&] { AppendMoney(plain_, cell_); })) cell_.clear();
    return number < kReadsBack ? number : CellNumber(cell_);
  }

  bool Hidden(double value) const {
    return (row_.just_show_positive == 0 && value > 0) ||
           (row_.just_show_positive == 1 && value < 0);
  }

  ExpressionRow row_;
  std::int32_t column_;
  std::int32_t columns_;
  EvaluationClass& evaluation_;
  std::optional<PreparedFormula> prepared_;
  std::vector<Source> sources_;  // by slot of the formula
  std::vector<double> values_;
  bool by_text_ = true;
  WorkingValue value_;
  std::string cell_;
  std::string plain_;
};

// Reads the formulas and adds their columns, headers included.
std::vector<ExpressionRow> AddColumns(ReportContext& report) {
  Recordset& slot = report.process.dten().rssqlGeneral1;
  OpenSlot(slot, ExpressionQuery(report.state.ReportID));
  std::vector<ExpressionRow> rows;
  std::int32_t column = report.flxMain.Cols();
  if (slot.RecordCount() > 0) report.flxMain.SetCols(column + slot.RecordCount());
  for (; !slot.AtEnd(); slot.MoveNext()) {
    report.flxMain.WriteCell(0, column++, TextOf(slot, "Name"));
    rows.push_back(ReadExpression(slot));
  }
  slot.Close();
  return rows;
}

// What a formula names and nobody gave a value would refuse all later ones.
void ForgetVariables(EvaluationClass& evaluation, std::int32_t given) {
  while (evaluation.CuentaVar() > given) evaluation.RemVar(given + 1);
}

void FillColumns(Grid& grid, EvaluationClass& evaluation, std::vector<ExpressionRow> rows,
                 CalculationTrace* trace) {
  const std::int32_t columns = grid.Cols();
  const std::int32_t first = columns - static_cast<std::int32_t>(rows.size());
  RowNumbers numbers(columns);
  std::vector<ExpressionColumn> calculated;
  for (std::int32_t column = first; ExpressionRow & row : rows) {
    calculated.emplace_back(std::move(row), column++, columns, evaluation, numbers);
  }
  const std::int32_t given = evaluation.CuentaVar();
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.AskAt(row);
    const bool sum = !grid.IsNumbered(row) && HasLabel(grid, row, kSumLabel);
    numbers.Next(grid, row, sum ? columns : first);
    if (sum) continue;
    for (ExpressionColumn& column : calculated) {
      column.Fill(grid, row, numbers);
      if (trace != nullptr) column.Tell(*trace, row);
      if (evaluation.CuentaVar() > given) ForgetVariables(evaluation, given);
    }
  }
  calculated.back().LeaveFormula();
}

}  // namespace

void MakeExpressionColumns(ReportContext& report) {
  Windows& windows = report.process.windows();
  windows.SetMousePointer(kHourglass);
  std::vector<ExpressionRow> rows = AddColumns(report);
  if (!rows.empty()) {
    FillColumns(report.flxMain, report.Evaluation, std::move(rows), report.state.Trace);
  }
  windows.SetMousePointer(0);
}

}  // namespace vorek
