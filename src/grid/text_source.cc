#include "grid/text_source.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "eval/held_number.h"
#include "platform/field_type.h"
#include "text/cell_text.h"
#include "text/number.h"

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

// A double as its text of 15 digits reads.
double TextValue(double number) { return std::isfinite(number) ? HoldDigits(number) : 0; }

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
  switch (form_) {
    case CellForm::kPlain:
      column.AppendDisplay(row, scratch);
      break;
    case CellForm::kNumber:
      AppendNumberForm(column, row, scratch);
      break;
    case CellForm::kMoney:
      AppendMoney(column.Display(row), scratch);
      break;
    case CellForm::kTime:
      scratch = FormText(column.Display(row), form_);
      break;
  }
  return scratch;
}

double FieldSource::Number(std::size_t record) const {
  const ResultColumn& column = Column();
  const std::size_t row = Row(record);
  const bool by_text = form_ == CellForm::kTime || column.AdoType() == kBoolean ||
                       column.Kind() == ResultColumn::Storage::kText;
  if (!by_text) {
    const double number = column.Number(row);
    if (column.Kind() == ResultColumn::Storage::kDouble) return TextValue(number);
    if (form_ != CellForm::kMoney || number >= 0) return number;
    // The text of a value between -1 and 0 shows no sign; others are read out of their brackets.
    return number > -1 ? -number : TextValue(number);
  }
  std::string scratch;
  return CellNumber(View(record, scratch));
}

std::shared_ptr<const TextSource> FieldSource::With(CellForm form) const {
  return std::make_shared<FieldSource>(result_, field_, records_, form);
}

std::string_view CountSource::View(std::size_t record, std::string& scratch) const {
  std::array<char, 24> buffer{};
  scratch.assign(buffer.data(),
                 std::to_chars(buffer.data(), buffer.data() + buffer.size(), record + 1).ptr);
  return scratch;
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
    case CellForm::kTime:
      out = MinutesToTime(text::ToInt32(text::NumericPrefix(text)));
      break;
  }
  return out;
}

}  // namespace vorek
