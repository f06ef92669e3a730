#include "odbc/tds/result_writer.h"

#include <algorithm>

#include "odbc/tds/moment_text.h"
#include "odbc/tds/tokens.h"
#include "vorek/field_type.h"

namespace vorek::tds {
namespace {

constexpr int kMostDigits = 38;

template <typename Test>
bool AllTexts(const ResultColumn& column, const Test& test) {
  if (column.Kind() != ResultColumn::Storage::kText) return true;
  for (std::size_t row = 0; row < column.Size(); ++row) {
    if (!column.IsNull(row) && !test(column.Text(row))) return false;
  }
  return true;
}

// Texts of a code page travel in it where it holds them all.
Column Characters(const ResultColumn& column, Kind plain, Kind unicode, bool prefers_plain) {
  constexpr std::size_t kMostBytes = 8000;
  const bool is_plain = prefers_plain && AllTexts(column, FitsCodePage);
  const bool fits = AllTexts(column, [&](std::string_view text) {
    return (is_plain ? text.size() : ToUtf16(text).size()) <= kMostBytes;
  });
  return {column.Name(), is_plain ? plain : unicode, fits ? kMostBytes : Column::kMax};
}

Column Binary(const ResultColumn& column) {
  constexpr std::size_t kMostBytes = 8000;
  const bool fits = AllTexts(column, [](std::string_view hexadecimal) {
    return hexadecimal.size() <= 2 * kMostBytes + 2;
  });
  return {column.Name(), Kind::kVarBinary, fits ? kMostBytes : Column::kMax};
}

// One that 64 bits can't hold comes as texts without a scale.
int PlacesOf(const ResultColumn& column) {
  std::size_t most = 0;
  AllTexts(column, [&](std::string_view digits) {
    const std::size_t point = digits.find('.');
    if (point != std::string_view::npos) most = std::max(most, digits.size() - point - 1);
    return true;
  });
  return std::max(column.Scale(), static_cast<int>(most));
}

Column TimeStamp(const ResultColumn& column) {
  if (AllTexts(column, FitsDateTime)) return {column.Name(), Kind::kDateTime, 8};
  return {column.Name(), Kind::kDateTime2, 0, 0, 7};
}

Column Declare(const ResultColumn& column) {
  const std::string& name = column.Name();
  switch (column.AdoType()) {
    case kBoolean:
      return {name, Kind::kBit, 1};
    case kUnsignedTinyInt:
      return {name, Kind::kInt, 1};
    case kSmallInt:
      return {name, Kind::kInt, 2};
    case kInteger:
      return {name, Kind::kInt, 4};
    case kBigInt:
      return {name, Kind::kInt, 8};
    case kSingle:
      return {name, Kind::kFloat, 4};
    case kDouble:
      return {name, Kind::kFloat, 8};
    case kCurrency:
      return {name, Kind::kMoney, 8};
    case kNumeric:
      return {name, Kind::kDecimal, 17, kMostDigits, PlacesOf(column)};
    case kDBDate:
      return {name, Kind::kDate, 3};
    case kDBTime:
      return {name, Kind::kTime, 5, 0, 7};
    case kDBTimeStamp:
      return TimeStamp(column);
    case kBinary:
    case kVarBinary:
      return Binary(column);
    case kLongVarBinary:
      return {name, Kind::kVarBinary, Column::kMax};
    case kChar:
      return Characters(column, Kind::kChar, Kind::kNChar, true);
    case kWChar:
      return Characters(column, Kind::kChar, Kind::kNChar, false);
    case kVarChar:
      return Characters(column, Kind::kVarChar, Kind::kNVarChar, true);
    case kLongVarChar: {
      Column declared = Characters(column, Kind::kVarChar, Kind::kNVarChar, true);
      declared.size = Column::kMax;
      return declared;
    }
    case kLongVarWChar:
      return {name, Kind::kNVarChar, Column::kMax};
    default:
      return Characters(column, Kind::kVarChar, Kind::kNVarChar, false);
  }
}

std::string FromHexadecimal(std::string_view text) {
  std::string bytes;
  const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  for (std::size_t i = 2; i + 1 < text.size(); i += 2) {
    bytes += static_cast<char>(digit(text[i]) << 4 | digit(text[i + 1]));
  }
  return bytes;
}

void WriteValue(const ResultColumn& from, std::size_t at, const Column& to, Row& row) {
  if (from.IsNull(at)) {
    row.Null();
    return;
  }
  switch (to.kind) {
    case Kind::kInt:
    case Kind::kBit:
      row.Whole(from.Scaled(at));
      break;
    case Kind::kFloat:
      row.Real(from.Double(at));
      break;
    case Kind::kMoney:
      row.Money(from.Scaled(at));
      break;
    case Kind::kDecimal:
      row.Decimal(from.Display(at));
      break;
    case Kind::kDate:
      row.Date(MomentOf(from.Text(at)).days);
      break;
    case Kind::kTime:
      row.Time(MomentOf("0001-01-01 " + std::string(from.Text(at))).milliseconds * 10000);
      break;
    case Kind::kDateTime2: {
      const Moment moment = MomentOf(from.Text(at));
      row.DateTime2(moment.days, moment.milliseconds * 10000);
      break;
    }
    case Kind::kDateTime: {
      const Moment moment = MomentOf(from.Text(at));
      row.DateTime(DaysSince1900(moment), Ticks(moment));
      break;
    }
    case Kind::kVarBinary:
      row.Binary(FromHexadecimal(from.Text(at)));
      break;
    case Kind::kGuid:
      throw ProtocolError("the embedded database has no such type");
    default:
      row.Text(from.Text(at));
  }
}

}  // namespace

std::vector<Column> DeclareColumns(const ResultSet& rows) {
  std::vector<Column> columns;
  for (const ResultColumn& column : rows.columns) columns.push_back(Declare(column));
  return columns;
}

bool WriteResult(const ResultSet& rows, PacketStream& out) {
  const std::vector<Column> columns = DeclareColumns(rows);
  out.Put(ColumnsToken(columns));
  Row plain(columns);
  Row compact(columns, true);
  for (std::size_t at = 0; at < rows.rows; ++at) {
    // Both forms of a row come in turns.
    Row& row = at % 2 == 0 ? plain : compact;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      WriteValue(rows.columns[i], at, columns[i], row);
    }
    out.Put(row.Token());
    constexpr std::size_t kAskEvery = 64;
    if (at % kAskEvery == 0 && out.Attention()) return false;
  }
  out.Put(DoneToken(kDoneMore | kDoneCount, rows.rows));
  return true;
}

}  // namespace vorek::tds
