#include "grid/text_source.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "eval/held_number.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

void AppendNumberForm(const ResultColumn& column, std::size_t row, std::string& out) {
  if (column.IsNull(row)) {
    out += '0';
    return;
  }
  switch (column.Kind()) {
    case ResultColumn::Storage::kScaled:
      text::AppendScaled(column.Scaled(row), column.Scale(), out);
      break;
    case ResultColumn::Storage::kText:
      if (column.AdoType() == kDouble) {
        text::AppendPlainNumber(column.Number(row), out);
      } else {
        text::AppendExactNumber(column.Text(row), out);
      }
      break;
    case ResultColumn::Storage::kDouble:
      text::AppendPlainNumber(column.Double(row), out);
      break;
  }
}

std::string_view NumberView(std::size_t number, std::string& scratch) {
  std::array<char, 24> buffer{};
  char* const begin = buffer.data();
  scratch.assign(begin, std::to_chars(begin, begin + buffer.size(), number).ptr);
  return scratch;
}

// A double as its text of 15 digits reads.
double TextValue(double number) { return std::isfinite(number) ? HoldDigits(number) : 0; }

// A double's text of 15 digits as a fixed-point value, unless it's large or near a tie.
bool FixedOfDouble(double number, std::int64_t& fixed) {
  const double scaled = TextValue(number) * 10000;
  if (!(std::fabs(scaled) < 1e14)) return false;
  const double nearest = NearestWhole(scaled);
  fixed = static_cast<std::int64_t>(nearest);
  return std::fabs(scaled - nearest) < 0.499;
}

std::int64_t Unit(int scale) {
  std::int64_t unit = 1;
  for (int place = 0; place < scale; ++place) unit *= 10;
  return unit;
}

}  // namespace

FieldSource::FieldSource(ResultSetPtr result, std::size_t field, Records records, CellForm form)
    : result_(std::move(result)), field_(field), records_(std::move(records)), form_(form) {}

std::size_t FieldSource::Size() const {
  return records_ == nullptr ? result_->rows : records_->size();
}

std::string_view FieldSource::View(std::size_t record, std::string& scratch) const {
  const ResultColumn& column = Column();
  const std::size_t row = Row(record);
  if (form_ == CellForm::kPlain && column.Kind() == ResultColumn::Storage::kText) {
    return column.IsNull(row) ? std::string_view() : column.Text(row);
  }
  scratch.clear();
  AppendFormed(row, scratch);
  return scratch;
}

void FieldSource::AppendFormed(std::size_t row, std::string& out) const {
  const ResultColumn& column = Column();
  if (IsMoneyForm() && GivesScaled() && !column.IsNull(row)) {
    return AppendScaledMoney(column.Scaled(row), column.Scale(), out);
  }
  switch (form_) {
    case CellForm::kPlain:
      column.AppendDisplay(row, out);
      break;
    case CellForm::kNumber:
      AppendNumberForm(column, row, out);
      break;
    case CellForm::kMoney:
      AppendMoney(column.Display(row), out);
      break;
    case CellForm::kNumberMoney: {
      std::string number;
      AppendNumberForm(column, row, number);
      AppendMoney(number, out);
      break;
    }
    case CellForm::kTime:
      out += FormText(column.Display(row), form_);
      break;
  }
}

// Digit groups cost more than the digits. A negative amount is read out of its brackets, which keep
// 15 digits; one above -1 shows no sign.
std::string_view FieldSource::Plain(std::size_t record, std::string& scratch) const {
  const ResultColumn& column = Column();
  const std::size_t row = Row(record);
  if (!IsMoneyForm() || !GivesScaled() || column.IsNull(row)) return View(record, scratch);
  constexpr std::int64_t kMost = 100000000000000;
  const std::int64_t value = column.Scaled(row);
  if (value < 0 && (value <= -kMost || column.Number(row) > -1)) return View(record, scratch);
  scratch.clear();
  text::AppendScaled(value, column.Scale(), scratch);
  return scratch;
}

double FieldSource::Number(std::size_t record) const {
  const ResultColumn& column = Column();
  const std::size_t row = Row(record);
  const bool by_text = form_ == CellForm::kTime || column.AdoType() == kBoolean ||
                       column.Kind() == ResultColumn::Storage::kText;
  if (!by_text) {
    const bool exact = column.Kind() == ResultColumn::Storage::kScaled;
    const double number = exact ? column.Number(row) : TextValue(column.Number(row));
    if (!IsMoneyForm() || number >= 0) return number;
    // The text of a value between -1 and 0 shows no sign; others are read out of their brackets.
    return number > -1 ? -number : TextValue(number);
  }
  std::string scratch;
  return CellNumber(View(record, scratch));
}

std::int64_t TextSource::Fixed(std::size_t record) const {
  std::string scratch;
  return CellFixedPoint(View(record, scratch));
}

bool TextSource::SameText(std::size_t a, std::size_t b) const {
  std::string first;
  std::string second;
  return View(a, first) == View(b, second);
}

std::int64_t FieldSource::Fixed(std::size_t record) const {
  constexpr std::array<std::int64_t, 5> kUnits = {10000, 1000, 100, 10, 1};
  const ResultColumn& column = Column();
  const std::size_t row = Row(record);
  std::int64_t fixed = 0;
  const bool plain_double = column.Kind() == ResultColumn::Storage::kDouble && !IsMoneyForm();
  if (plain_double && form_ != CellForm::kTime && FixedOfDouble(column.Double(row), fixed)) {
    return fixed;
  }
  if (column.Kind() != ResultColumn::Storage::kScaled || column.Scale() > 4 ||
      column.AdoType() == kBoolean || form_ == CellForm::kTime) {
    return TextSource::Fixed(record);
  }
  const std::int64_t unit = kUnits[static_cast<std::size_t>(column.Scale())];
  const std::int64_t value = column.Scaled(row);  // 0 for NULL
  // Brackets keep 15 digits, and those of a value between -1 and 0 aren't there.
  constexpr std::int64_t kMost = 100000000000000;
  const bool odd = IsMoneyForm() && value < 0 && value * unit > -10000;
  if (value <= -kMost || value >= kMost) return TextSource::Fixed(record);
  return odd ? -value * unit : value * unit;
}

bool FieldSource::SameText(std::size_t a, std::size_t b) const {
  const ResultColumn& column = Column();
  const std::size_t first = Row(a);
  const std::size_t second = Row(b);
  // A form of numbers shows NULL as 0, others as the empty text.
  const bool null_is_zero =
      form_ == CellForm::kNumber || form_ == CellForm::kNumberMoney || form_ == CellForm::kTime;
  const bool nulls_differ = column.IsNull(first) != column.IsNull(second);
  if (nulls_differ && !null_is_zero) return TextSource::SameText(a, b);
  switch (column.Kind()) {
    case ResultColumn::Storage::kScaled: {
      if (form_ == CellForm::kTime && column.Scale() > 0) return TextSource::SameText(a, b);
      return SameNumber(column.Scaled(first), column.Scaled(second), Unit(column.Scale()));
    }
    case ResultColumn::Storage::kDouble:
      if (form_ == CellForm::kTime) return TextSource::SameText(a, b);
      return SameDouble(column.Double(first), column.Double(second));
    case ResultColumn::Storage::kText:
      break;
  }
  return column.Text(first) == column.Text(second) ||
         (form_ != CellForm::kPlain && TextSource::SameText(a, b));
}

std::vector<bool> TextSource::Changes(const std::vector<std::uint32_t>& records) const {
  std::vector<bool> changes(records.size(), true);
  for (std::size_t i = 1; i < records.size(); ++i) {
    changes[i] = !SameText(records[i - 1], records[i]);
  }
  return changes;
}

// The values of records in any order lie all over the column: they are fetched in a loop that
// doesn't wait for each before it asks for the next.
std::vector<bool> FieldSource::Changes(const std::vector<std::uint32_t>& records) const {
  const ResultColumn& column = Column();
  const bool scaled = column.Kind() == ResultColumn::Storage::kScaled;
  const bool same_numbers = form_ != CellForm::kTime && !column.HasNulls();
  if (column.Kind() == ResultColumn::Storage::kText || !same_numbers) {
    return TextSource::Changes(records);
  }
  std::vector<bool> changes(records.size(), true);
  const auto compare = [&](const auto& fetch, const auto& same) {
    std::vector<decltype(fetch(0))> values(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) values[i] = fetch(Row(records[i]));
    for (std::size_t i = 1; i < values.size(); ++i) changes[i] = !same(values[i - 1], values[i]);
  };
  if (scaled) {
    const std::int64_t unit = Unit(column.Scale());
    compare([&](std::size_t row) { return column.Scaled(row); },
            [&](std::int64_t a, std::int64_t b) { return SameNumber(a, b, unit); });
  } else {
    compare([&](std::size_t row) { return column.Double(row); },
            [&](double a, double b) { return SameDouble(a, b); });
  }
  return changes;
}

// Of two numbers that are farther apart than their fifteenth digit no text needs to be made.
bool FieldSource::SameDouble(double a, double b) const {
  constexpr double kFarApart = 1e-9;
  const bool same_sign = (a < 0) == (b < 0);
  if (same_sign && std::fabs(a - b) > kFarApart * (std::fabs(a) + std::fabs(b))) return false;
  return SameNumber(TextValue(a), TextValue(b), 1.0);
}

// Money shows a value between -1 and 0 without its sign.
template <typename Value>
bool FieldSource::SameNumber(Value a, Value b, Value one) const {
  return a == b || (IsMoneyForm() && a == -b && a < one && a > -one);
}

bool FieldSource::GivesNumbers() const {
  const ResultColumn& column = Column();
  return column.Kind() != ResultColumn::Storage::kText && column.AdoType() != kBoolean &&
         form_ != CellForm::kTime;
}

bool FieldSource::GivesFixed() const {
  const bool scaled = Column().Kind() == ResultColumn::Storage::kScaled;
  return GivesNumbers() && scaled && Column().Scale() <= 4;
}

std::shared_ptr<const TextSource> FieldSource::With(CellForm form) const {
  return std::make_shared<FieldSource>(result_, field_, records_, form);
}

std::string_view CountSource::View(std::size_t record, std::string& scratch) const {
  return NumberView(record + 1, scratch);
}

std::string_view NumberSource::View(std::size_t record, std::string& scratch) const {
  return NumberView(numbers_[record], scratch);
}

std::string FormText(std::string_view text, CellForm form) {
  std::string out;
  switch (form) {
    case CellForm::kPlain:
      out = text;
      break;
    case CellForm::kNumber:
      out = text::ExactNumber(text);
      break;
    case CellForm::kMoney:
      AppendMoney(text, out);
      break;
    case CellForm::kNumberMoney:
      AppendMoney(text::ExactNumber(text), out);
      break;
    case CellForm::kTime:
      out = MinutesToTime(text::ToInt32(text::NumericPrefix(text)));
      break;
  }
  return out;
}

}  // namespace vorek
