#include "totals/selection_figures.h"

#include <algorithm>
#include <utility>

#include "grid/summary_label.h"
#include "totals/group_reports.h"
#include "totals/group_totals.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

constexpr int kDecimals = 4;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Adds a digit; false beyond a fixed-point value.
bool Push(FixedPoint& value, char digit) {
  return !__builtin_mul_overflow(value, FixedPoint{10}, &value) &&
         !__builtin_add_overflow(value, FixedPoint{digit - '0'}, &value);
}

// The digits before the point: either none are grouped, or all are.
bool ReadWhole(std::string_view& text, FixedPoint& value) {
  int group = 0;
  bool grouped = false;
  bool any = false;
  for (; !text.empty() && text[0] != '.'; text.remove_prefix(1)) {
    if (IsDigit(text[0])) {
      any = true;
      ++group;
      if (!Push(value, text[0])) return false;
    } else if (text[0] == '/' && (grouped ? group == 3 : group >= 1 && group <= 3)) {
      grouped = true;
      group = 0;
    } else {
      return false;
    }
  }
  return any && (!grouped || group == 3);
}

bool ReadDecimals(std::string_view text, FixedPoint& value) {
  int count = 0;
  if (!text.empty()) text.remove_prefix(1);  // the point
  for (const char c : text) {
    if (!IsDigit(c)) return false;
    if (++count > kDecimals) {
      if (c != '0') return false;
    } else if (!Push(value, c)) {
      return false;
    }
  }
  for (; count < kDecimals; ++count) {
    if (!Push(value, '0')) return false;
  }
  return true;
}

// The quotient of a plain decimal number, with two decimals.
std::string Quotient(std::string plain, std::int64_t divisor) {
  const bool negative = plain.starts_with('-');
  if (negative) plain.erase(0, 1);
  const std::size_t point = plain.find('.');
  std::string decimals = point == std::string::npos ? "" : plain.substr(point + 1);
  decimals.resize(kDecimals, '0');
  const std::string digits = plain.substr(0, point) + decimals;
  // Long division; two of the four decimals are kept and the rest decides the rounding.
  std::string quotient;
  std::int64_t rest = 0;
  for (const char digit : digits) {
    rest = rest * 10 + (digit - '0');
    quotient += static_cast<char>('0' + rest / divisor);
    rest %= divisor;
  }
  const bool up = quotient[quotient.size() - 2] >= '5';
  quotient.resize(quotient.size() - 2);
  for (std::size_t i = quotient.size(); up && i-- > 0;) {
    if (quotient[i] != '9') {
      ++quotient[i];
      break;
    }
    quotient[i] = '0';
    if (i == 0) quotient.insert(0, "1");
  }
  quotient.insert(quotient.size() - 2, ".");
  while (quotient.ends_with('0')) quotient.pop_back();
  if (quotient.ends_with('.')) quotient.pop_back();
  quotient.erase(0, std::min(quotient.find_first_not_of('0'), quotient.size() - 1));
  if (quotient.starts_with('.')) quotient.insert(0, "0");
  return negative && quotient != "0" ? "-" + quotient : quotient;
}

// Decimals of any size and the rarer whole numbers among them.
bool IsNumberType(int type) {
  return (type >= kSmallInt && type <= kCurrency) || type == kDecimal ||
         (type >= kTinyInt && type <= kUnsignedBigInt) || type == kNumeric || type == kVarNumeric;
}

bool IsExact(const Grid& grid, std::int32_t column) {
  const TextSource* const source =
      column >= 0 && column < grid.Cols() ? grid.ColumnSource(column) : nullptr;
  return source != nullptr && source->GivesNumbers() && source->GivesFixed();
}

std::string TimeText(const std::string& plain) {
  return MinutesToTime(std::stoll(plain.substr(0, plain.find('.'))));
}

// A negative one in parentheses, also between -1 and 0, where a cell of money has none.
std::string MoneyText(const std::string& plain) {
  return plain.starts_with('-') ? "(" + MoneyOfTotal(plain.substr(1)) + ")" : MoneyOfTotal(plain);
}

std::string Text(FixedPoint value, bool time) {
  FixedTotal total;
  total.Add(value);
  return time ? TimeText(total.Text()) : MoneyText(total.Text());
}

}  // namespace

bool ReadFigure(std::string_view text, FixedPoint& value) {
  value = 0;
  bool negative = false;
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    negative = true;
    text = text.substr(1, text.size() - 2);
  } else if (text.starts_with('-')) {
    negative = true;
    text.remove_prefix(1);
  }
  if (!ReadWhole(text, value) || !ReadDecimals(text, value)) return false;
  if (negative) value = -value;
  return true;
}

FigureKind FigureKindOf(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  const std::vector<FieldInfo>& fields = state.QueryFields;
  if (field >= fields.size()) return FigureKind::kNumber;
  if (IsTimeColumn(fields[field].type, fields[field].name)) return FigureKind::kTime;
  return IsNumberType(fields[field].type) ? FigureKind::kNumber : FigureKind::kNone;
}

// The cells of a cross table are read one by one.
SelectionScan::SelectionScan(const ReportContext& report, const std::vector<std::int32_t>& columns)
    : grid_(report.ActiveGrid()) {
  const bool crossed = report.state.isTransposedResult;
  for (const std::int32_t column : columns) {
    const Kind kind = crossed ? Kind::kNumber : FigureKindOf(report.state, column);
    columns_.push_back({column, kind, kind == Kind::kNumber && IsExact(grid_, column)});
  }
  has_subtotals_ = !report.state.isTransposedResult &&
                   FindGroupReport(report.state.ReportID) != nullptr && grid_.Cols() > 1;
  heights_ = grid_.RowHeightsDiffer();
  all_numbered_ = grid_.IsSourced(0);
  const auto [first, last] = std::minmax({grid_.Row(), grid_.RowSel()});
  next_ = std::max(first, grid_.FixedRows());
  last_ = std::min(last, grid_.Rows() - 1);
}

SelectionScan::SelectionScan(const ReportContext& report)
    : SelectionScan(report, [&report] {
        const Grid& grid = report.ActiveGrid();
        const auto [first, last] = std::minmax({grid.Col(), grid.ColSel()});
        std::vector<std::int32_t> columns;
        for (std::int32_t col = std::max(first, grid.FixedCols()); col <= last; ++col) {
          columns.push_back(col);
        }
        return columns;
      }()) {}

// Rows and columns that went since the beginning are read no more.
bool SelectionScan::Step(std::int32_t rows) {
  last_ = std::min(last_, grid_.Rows() - 1);
  std::erase_if(columns_, [this](const Column& c) { return c.number >= grid_.Cols(); });
  const std::int64_t end = std::min<std::int64_t>(std::int64_t{next_} + rows, last_ + 1);
  for (; next_ < end; ++next_) ReadRow(next_);
  return next_ > last_;
}

void SelectionScan::ReadRow(std::int32_t row) {
  if (heights_ && grid_.RowHeight(row) == 0) return;
  if (!all_numbered_ && !grid_.IsNumbered(row) && IsSummaryRow(grid_, row)) return;
  Tally& tally = has_subtotals_ && TellsSubtotal(grid_, row) ? subtotals_ : data_;
  ++tally.rows;
  for (const Column& column : columns_) {
    if (column.kind != Kind::kNone) ReadCell(row, column, tally);
  }
}

// Without the way over its text. False for one that may be empty, has too many digits, or was
// written by another than the field, which may be any text.
bool SelectionScan::ReadFixed(std::int32_t row, const Column& column, Tally& tally) const {
  if (!grid_.IsSourced(row, column.number)) return false;
  try {
    const FixedPoint value = grid_.CellFixed(row, column.number);
    if (value != 0) Count(value, Kind::kNumber, tally);
    return value != 0;
  } catch (const Error&) {
    return false;
  }
}

void SelectionScan::ReadCell(std::int32_t row, const Column& column, Tally& tally) {
  if (column.fixed && ReadFixed(row, column, tally)) return;
  const bool number = grid_.IsNumber(row, column.number);
  const std::string_view text = number && column.kind == Kind::kNumber
                                    ? grid_.CellPlain(row, column.number, scratch_)
                                    : grid_.CellView(row, column.number, scratch_);
  if (text.empty()) return;
  FixedPoint value = 0;
  if (column.kind == Kind::kTime && text.find(':') != std::string_view::npos) {
    Count(TimeToMinutes(text) * std::int64_t{10000}, Kind::kTime, tally);
  } else if (ReadFigure(text, value)) {
    Count(value, Kind::kNumber, tally);
  } else if (number) {
    tally.exact = false;  // one that has too many digits
  }
}

void SelectionScan::Count(FixedPoint value, Kind kind, Tally& tally) {
  (kind == Kind::kTime ? tally.has_times : tally.has_numbers) = true;
  tally.least = tally.numbers == 0 ? value : std::min(tally.least, value);
  tally.greatest = tally.numbers == 0 ? value : std::max(tally.greatest, value);
  ++tally.numbers;
  tally.total.Add(value);
}

SelectionFigures SelectionScan::Figures() const {
  const Tally& tally = data_.rows > 0 ? data_ : subtotals_;
  SelectionFigures figures;
  figures.rows = tally.rows;
  figures.numbers = tally.numbers;
  const bool mixed = tally.has_times && tally.has_numbers;
  if (tally.numbers == 0 || mixed || !tally.exact) return figures;
  const std::string plain = tally.total.Text();
  const std::string average = Quotient(plain, tally.numbers);
  const bool time = tally.has_times;
  figures.sum = time ? TimeText(plain) : MoneyText(plain);
  figures.average = time ? TimeText(average) : MoneyText(average);
  figures.least = Text(tally.least, time);
  figures.greatest = Text(tally.greatest, time);
  return figures;
}

SelectionFigures FiguresOfSelection(const ReportContext& report) {
  SelectionScan scan(report);
  while (!scan.Step(4096)) {
  }
  return scan.Figures();
}

}  // namespace vorek
