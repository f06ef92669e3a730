#include "catalog/recordset.h"

#include <algorithm>
#include <utility>

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

double ReadNumber(const ResultColumn& column, std::size_t row) {
  if (column.IsNull(row)) {
    throw Error(ErrorNumber::kNullUse, "Invalid use of Null in field " + column.Name());
  }
  if (column.Kind() == ResultColumn::Storage::kText) {
    const std::string_view text = text::TrimView(column.Text(row));
    if (text.empty() || text.find_first_of("0123456789") == std::string_view::npos) {
      throw Error(ErrorNumber::kTypeMismatch, "Type mismatch: field " + column.Name() +
                                                  " holds \"" + text::Left(text, 50) +
                                                  "\", not a number");
    }
  }
  return column.Number(row);
}

}  // namespace

std::int32_t FieldValue::Number() const { return text::ToInt32(ReadNumber(column_, row_)); }

bool FieldValue::Flag() const {
  const bool text = column_.Kind() == ResultColumn::Storage::kText && !IsNull();
  if (text && text::EqualsIgnoreCase(column_.Text(row_), "true")) return true;
  if (text && text::EqualsIgnoreCase(column_.Text(row_), "false")) return false;
  return ReadNumber(column_, row_) != 0;
}

void Recordset::Open(std::string text) {
  SetSource(std::move(text));
  Open();
}

void Recordset::Open() {
  if (IsOpen()) throw Error(ErrorNumber::kObjectOpen, "The recordset is open already.");
  ResultSetPtr result = connection_.Execute(source_, timeout_seconds_);
  result_ = std::move(result);
  position_ = 0;
  if (result_ == nullptr || filter_ == "0") return;
  try {
    records_ = Select(filter_);
  } catch (const std::exception&) {
    Close();
    throw;
  }
}

void Recordset::Close() {
  index_.reset();
  records_.reset();
  result_.reset();
}

const ResultSet& Recordset::Result() const {
  if (IsOpen()) return *result_;
  throw Error(ErrorNumber::kObjectClosed, "Operation is not allowed when the object is closed.");
}

std::size_t Recordset::Count() const {
  const ResultSet& result = Result();
  return records_ == nullptr ? result.rows : records_->size();
}

std::int32_t Recordset::RecordCount() const { return static_cast<std::int32_t>(Count()); }

bool Recordset::AtEnd() const { return position_ >= Count(); }

void Recordset::MoveFirst() {
  Result();
  position_ = 0;
}

void Recordset::MoveNext() {
  if (AtEnd()) throw Error(ErrorNumber::kNoCurrentRecord, "The recordset is at its end.");
  ++position_;
}

std::int32_t Recordset::AbsolutePosition() const {
  return AtEnd() ? 0 : static_cast<std::int32_t>(position_) + 1;
}

void Recordset::SetAbsolutePosition(std::int32_t position) {
  if (position < 1 || static_cast<std::size_t>(position) > Count()) {
    throw Error(ErrorNumber::kNoCurrentRecord, "No record " + std::to_string(position));
  }
  position_ = static_cast<std::size_t>(position) - 1;
}

std::size_t Recordset::CurrentRow() const {
  if (AtEnd()) throw Error(ErrorNumber::kNoCurrentRecord, "The recordset has no current record.");
  return records_ == nullptr ? position_ : (*records_)[position_];
}

const ResultColumn& Recordset::ColumnAt(std::size_t ordinal) const {
  const ResultSet& result = Result();
  if (ordinal < result.columns.size()) return result.columns[ordinal];
  throw Error(ErrorNumber::kItemNotFound, "There is no field " + std::to_string(ordinal));
}

bool Recordset::HasField(std::string_view name) const {
  const auto& columns = Result().columns;
  return std::any_of(columns.begin(), columns.end(), [&](const ResultColumn& column) {
    return text::EqualsIgnoreCase(column.Name(), name);
  });
}

FieldValue Recordset::Field(std::string_view name) const {
  for (const ResultColumn& column : Result().columns) {
    if (text::EqualsIgnoreCase(column.Name(), name)) return {column, CurrentRow()};
  }
  throw Error(ErrorNumber::kItemNotFound,
              "There is no field " + std::string(name) + " in: " + text::Left(source_, 200));
}

FieldValue Recordset::Field(std::size_t ordinal) const { return {ColumnAt(ordinal), CurrentRow()}; }

void Recordset::SetFilter(std::string text) {
  if (text::TrimView(text).empty()) text = "0";
  if (text != "0" && IsOpen()) {
    records_ = Select(text);
  } else {
    records_.reset();
  }
  filter_ = std::move(text);
  position_ = 0;
}

std::shared_ptr<const std::vector<std::uint32_t>> Recordset::Select(const std::string& filter) {
  const RecordFilter condition(filter, Result());
  auto rows = std::make_shared<std::vector<std::uint32_t>>();
  RecordFilter::KeyTest test{};
  if (condition.IsKeyTest(test)) {
    Lookup(test, *rows);
    return rows;
  }
  PassWatch* const watch = connection_.watch;
  for (std::size_t row = 0; row < Result().rows; ++row) {
    if (watch != nullptr) watch->At(static_cast<std::int32_t>(row));
    if (condition.Matches(row)) rows->push_back(static_cast<std::uint32_t>(row));
  }
  return rows;
}

void Recordset::Lookup(const RecordFilter::KeyTest& test, std::vector<std::uint32_t>& rows) {
  if (!index_ || index_column_ != test.column) {
    index_.emplace(Result().columns[test.column]);
    index_column_ = test.column;
  }
  for (std::uint32_t row = index_->First(test.key); row != KeyIndex::kNone;
       row = index_->Next(row)) {
    rows.push_back(row);
  }
}

}  // namespace vorek
