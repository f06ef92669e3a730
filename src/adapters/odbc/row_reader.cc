#include "adapters/odbc/row_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "adapters/odbc/handle.h"
#include "adapters/odbc/value_text.h"
#include "adapters/odbc/wide_text.h"
#include "text/number.h"
#include "vorek/field_type.h"

namespace vorek::odbc {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{2} << 20;
constexpr std::size_t kMostRows = 512;
constexpr std::size_t kPieceBytes = std::size_t{64} << 10;

template <typename Value>
Value ReadAs(const unsigned char* bytes) {
  Value value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

std::size_t EndBytes(const ColumnPlan& plan) {
  if (plan.c_type == SQL_C_WCHAR) return sizeof(SQLWCHAR);
  return plan.c_type == SQL_C_CHAR ? 1 : 0;
}

}  // namespace

RowReader::RowReader(SQLHANDLE statement, const DriverTraits& traits, OnTrouble on_trouble)
    : statement_(statement), traits_(traits), on_trouble_(std::move(on_trouble)) {}

// The statement outlives the buffers that it would write to.
RowReader::~RowReader() {
  SQLFreeStmt(statement_, SQL_UNBIND);
  SQLSetStmtAttr(statement_, SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
}

void RowReader::Check(SQLRETURN code) const {
  if (!SQL_SUCCEEDED(code)) on_trouble_(code);
}

ResultSetPtr RowReader::Read(SQLSMALLINT columns, const OnBlock& on_block) {
  Prepare(columns);
  ChooseBlock();
  Bind();
  for (;;) {
    const SQLRETURN code = SQLFetchScroll(statement_, SQL_FETCH_NEXT, 0);
    if (code == SQL_NO_DATA) break;
    // An error behind the first rows of a block comes as information about those.
    if (code != SQL_SUCCESS) on_trouble_(code);
    AppendBlock(static_cast<std::size_t>(fetched_));
    on_block(*result_);
  }
  return std::move(result_);
}

void RowReader::Prepare(SQLSMALLINT count) {
  bool after_long = false;
  for (ColumnDescription& description : DescribeColumns(statement_, count, traits_.unicode)) {
    Column column;
    column.plan = PlanColumn(description, traits_.unicode);
    after_long = after_long || column.plan.is_long;
    // Behind a long column a driver may insist on reading everything piece by piece.
    column.bound = !column.plan.is_long && (traits_.get_any_column || !after_long);
    result_->columns.emplace_back(std::move(description.name), column.plan.ado_type,
                                  column.plan.storage, column.plan.scale);
    columns_.push_back(std::move(column));
  }
}

// Several rows at a time, unless something has to be read again or in pieces that the driver gives
// for the current row only.
void RowReader::ChooseBlock() {
  std::size_t row_bytes = 0;
  bool whole = true;
  for (const Column& column : columns_) {
    row_bytes += column.plan.width + sizeof(SQLLEN);
    const bool may_be_cut = IsVariable(column.plan) && !traits_.is_sql_server &&
                            !(traits_.get_in_block && traits_.get_bound_columns);
    if (!column.bound || may_be_cut) whole = false;
  }
  block_ = whole ? std::clamp(kBlockBytes / std::max<std::size_t>(row_bytes, 1), std::size_t{1},
                              kMostRows)
                 : 1;
}

void RowReader::Bind() {
  SQLSetStmtAttr(statement_, SQL_ATTR_ROW_BIND_TYPE, AttributeNumber(SQL_BIND_BY_COLUMN), 0);
  if (!SQL_SUCCEEDED(
          SQLSetStmtAttr(statement_, SQL_ATTR_ROW_ARRAY_SIZE, AttributeNumber(block_), 0))) {
    block_ = 1;
  }
  SQLSetStmtAttr(statement_, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    Column& column = columns_[i];
    if (!column.bound) continue;
    column.buffer.resize(column.plan.width * block_);
    column.lengths.resize(block_);
    Check(SQLBindCol(statement_, static_cast<SQLUSMALLINT>(i + 1), column.plan.c_type,
                     column.buffer.data(), static_cast<SQLLEN>(column.plan.width),
                     column.lengths.data()));
  }
}

void RowReader::AppendBlock(std::size_t rows) {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    for (std::size_t row = 0; row < rows; ++row) {
      columns_[i].bound ? AppendBound(i, row) : AppendInPieces(i);
    }
  }
  result_->rows += rows;
}

bool RowReader::IsCut(const Column& column, SQLLEN length) const {
  if (!IsVariable(column.plan)) return false;
  return length == SQL_NO_TOTAL ||
         static_cast<std::size_t>(length) + EndBytes(column.plan) > column.plan.width;
}

void RowReader::AppendBound(std::size_t index, std::size_t row) {
  const Column& column = columns_[index];
  const SQLLEN length = column.lengths[row];
  if (length == SQL_NULL_DATA) {
    result_->columns[index].AppendNull();
  } else if (IsCut(column, length)) {
    Reread(index, row);
  } else {
    AppendDecoded(column.plan, column.buffer.data() + row * column.plan.width,
                  static_cast<std::size_t>(length), result_->columns[index]);
  }
}

void RowReader::AppendDecoded(const ColumnPlan& plan, const unsigned char* value,
                              std::size_t length, ResultColumn& out) {
  text_.clear();
  switch (plan.c_type) {
    case SQL_C_SBIGINT:
      return out.AppendScaled(ReadAs<SQLBIGINT>(value));
    case SQL_C_DOUBLE:
      return out.AppendDouble(ReadAs<double>(value));
    case SQL_C_FLOAT:
      return out.AppendDouble(text::DoubleOf(ReadAs<float>(value)));
    case SQL_C_CHAR: {
      const std::string_view digits(reinterpret_cast<const char*>(value), length);
      if (out.Kind() == ResultColumn::Storage::kScaled) {
        if (const auto scaled = ScaledOf(digits, plan.scale)) return out.AppendScaled(*scaled);
        out.ConvertToText();
      }
      return out.AppendText(IsExact(plan) ? WithoutEndingZeros(digits) : digits);
    }
    case SQL_C_TYPE_TIMESTAMP: {
      const auto moment = ReadAs<SQL_TIMESTAMP_STRUCT>(value);
      plan.ado_type == kDBTime ? AppendTime(moment, text_) : AppendTimestamp(moment, text_);
      break;
    }
    case SQL_C_TYPE_DATE:
      AppendDate(ReadAs<SQL_DATE_STRUCT>(value), text_);
      break;
    case SQL_C_BINARY:
      text_ = "0x";
      AppendHex(value, length, text_);
      break;
    default:
      AppendUtf8(reinterpret_cast<const SQLWCHAR*>(value), length / sizeof(SQLWCHAR), text_);
  }
  out.AppendText(text_);
}

// A value of the current row from its beginning to its end.
void RowReader::AppendInPieces(std::size_t index) {
  const ColumnPlan& plan = columns_[index].plan;
  std::vector<unsigned char> value;
  std::size_t size = 0;
  for (;;) {
    value.resize(size + std::max(kPieceBytes, plan.width));
    const std::size_t room = value.size() - size;
    SQLLEN length = 0;
    const SQLRETURN code = SQLGetData(statement_, static_cast<SQLUSMALLINT>(index + 1), plan.c_type,
                                      value.data() + size, static_cast<SQLLEN>(room), &length);
    if (code == SQL_NO_DATA) break;
    Check(code);
    if (length == SQL_NULL_DATA) return result_->columns[index].AppendNull();
    const bool cut = length == SQL_NO_TOTAL ||
                     (IsVariable(plan) && static_cast<std::size_t>(length) + EndBytes(plan) > room);
    size += cut ? room - EndBytes(plan) : static_cast<std::size_t>(length);
    if (!cut) break;
  }
  AppendDecoded(plan, value.data(), size, result_->columns[index]);
}

// A value that its bound buffer couldn't take: the row is made the current one and asked again.
void RowReader::Reread(std::size_t index, std::size_t row) {
  if (block_ > 1) {
    Check(SQLSetPos(statement_, static_cast<SQLSETPOSIROW>(row + 1), SQL_POSITION,
                    SQL_LOCK_NO_CHANGE));
  }
  AppendInPieces(index);
}

}  // namespace vorek::odbc
