#include "adapters/sqlite/reader.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "adapters/sqlite/exact.h"
#include "adapters/sqlite/handle.h"
#include "text/number.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

using Storage = ResultColumn::Storage;

struct Limits {
  std::int64_t least = INT64_MIN;
  std::int64_t most = INT64_MAX;
};

Limits LimitsOf(const Type& type) {
  switch (type.kind) {
    case TypeKind::kTinyInt:
      return {0, 255};
    case TypeKind::kSmallInt:
      return {INT16_MIN, INT16_MAX};
    case TypeKind::kInt:
      return {INT32_MIN, INT32_MAX};
    default:
      return {};
  }
}

[[noreturn]] void ThrowOverflow(const Type& type) {
  constexpr long kDataOverflow = -2147217833;  // 80040E57
  std::string name = TypeName(type);
  name = type.IsDecimal() ? "numeric" : name.substr(0, name.find('('));
  throw Error(kDataOverflow,
              "Arithmetic overflow error converting expression to data type " + name + ".");
}

// Reads one column of the rows, for the life of a statement.
class ColumnReader {
 public:
  // taken grows by the bytes of the texts that are read.
  ColumnReader(sqlite3_stmt* statement, int index, const Type& type, ResultColumn& column,
               std::size_t& taken)
      : statement_(statement),
        index_(index),
        type_(type),
        limits_(LimitsOf(type)),
        storage_(column.Kind()),
        moment_(type.IsDate() && type.kind != TypeKind::kDate),
        column_(column),
        taken_(taken) {}

  void Read() {
    sqlite3_value* const value = sqlite3_column_value(statement_, index_);
    const int kind = sqlite3_value_type(value);
    if (kind == SQLITE_NULL) {
      column_.AppendNull();
    } else if (storage_ == Storage::kText) {
      ReadText(value, kind);
    } else if (storage_ == Storage::kDouble && kind != SQLITE_TEXT) {
      const double number = sqlite3_value_double(value);
      const bool single = type_.kind == TypeKind::kReal;
      column_.AppendDouble(single ? text::DoubleOf(static_cast<float>(number)) : number);
    } else if (storage_ == Storage::kScaled && kind == SQLITE_INTEGER) {
      const std::int64_t number = sqlite3_value_int64(value);
      if (number < limits_.least || number > limits_.most) ThrowOverflow(type_);
      column_.AppendScaled(number);
    } else {
      ReadOther(value, kind);
    }
  }

 private:
  void ReadText(sqlite3_value* value, int kind) {
    if (type_.IsDecimal()) return ReadWide(value);
    if (kind == SQLITE_BLOB) return ReadBytes(value);
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    std::string_view s(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    if (moment_ && s.size() > 4 && s.substr(s.size() - 4) == ".000") s.remove_suffix(4);
    column_.AppendText(s);
    taken_ += s.size();
  }

  void ReadBytes(sqlite3_value* value) {
    const auto* bytes = static_cast<const unsigned char*>(sqlite3_value_blob(value));
    const int size = sqlite3_value_bytes(value);
    std::string text = "0x";
    text.reserve(2 + 2 * static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      text += kDigits[bytes[i] >> 4U];
      text += kDigits[bytes[i] & 15U];
    }
    column_.AppendText(text);
    taken_ += text.size();
  }

  // A value that isn't what the column's type lets expect: a decimal beyond 63 bits, or what
  // another program wrote into the file.
  void ReadOther(sqlite3_value* value, int kind) {
    if (kind == SQLITE_FLOAT) ThrowOverflow(type_);
    column_.ConvertToText();
    storage_ = Storage::kText;
    ReadText(value, kind);
  }

  // A decimal in a column of texts.
  void ReadWide(sqlite3_value* value) {
    const std::optional<Wide> number = WideOf(value);
    if (!number) ThrowOverflow(type_);
    std::string digits = WideText(*number, type_.scale);
    if (type_.scale > 0) digits.resize(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    column_.AppendText(digits);
  }

  sqlite3_stmt* statement_;
  int index_;
  const Type& type_;
  Limits limits_;
  Storage storage_;
  bool moment_;
  ResultColumn& column_;
  std::size_t& taken_;
};

}  // namespace

ResultSetPtr ReadRows(sqlite3* db, sqlite3_stmt* statement,
                      const std::vector<OutputColumn>& columns,
                      const std::function<void(const ResultSet&)>& checkpoint) {
  auto result = std::make_shared<ResultSet>();
  result->columns.reserve(columns.size());
  std::vector<ColumnReader> readers;
  readers.reserve(columns.size());
  std::size_t taken = 0;
  for (const OutputColumn& column : columns) {
    result->columns.emplace_back(column.name, AdoType(column.type), StorageOf(column.type),
                                 column.type.scale);
    readers.emplace_back(statement, static_cast<int>(readers.size()), column.type,
                         result->columns.back(), taken);
  }
  constexpr std::size_t kCheckRows = 4096;
  constexpr std::size_t kCheckBytes = std::size_t{16} << 20U;
  while (Step(db, statement)) {
    for (ColumnReader& reader : readers) reader.Read();
    if (++result->rows % kCheckRows != 0 && taken < kCheckBytes) continue;
    taken = 0;
    checkpoint(*result);
  }
  checkpoint(*result);
  return result;
}

}  // namespace vorek::sqlite
