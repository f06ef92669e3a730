#include "odbc/tds/column.h"

#include "odbc/tds/tokens.h"

namespace vorek::tds {
namespace {

std::size_t DecimalSize(int precision) {
  if (precision <= 9) return 5;
  if (precision <= 19) return 9;
  return precision <= 28 ? 13 : 17;
}

void WriteType(const Column& column, Bytes& out) {
  out.U8(static_cast<std::uint8_t>(column.kind));
  switch (column.kind) {
    case Kind::kBit:
      out.U8(1);
      break;
    case Kind::kGuid:
      out.U8(16);
      break;
    case Kind::kInt:
    case Kind::kFloat:
    case Kind::kMoney:
    case Kind::kDateTime:
      out.U8(column.size);
      break;
    case Kind::kDecimal:
      out.U8(DecimalSize(column.precision)).U8(static_cast<std::uint8_t>(column.precision));
      out.U8(static_cast<std::uint8_t>(column.scale));
      break;
    case Kind::kTime:
    case Kind::kDateTime2:
      out.U8(static_cast<std::uint8_t>(column.scale));
      break;
    case Kind::kDate:
      break;
    case Kind::kVarBinary:
    case Kind::kVarChar:
    case Kind::kChar:
    case Kind::kNVarChar:
    case Kind::kNChar:
      out.U16(column.size);
      if (column.IsText()) out.Raw(Collation());
  }
}

}  // namespace

bool Column::IsText() const { return kind == Kind::kVarChar || kind == Kind::kChar || IsUnicode(); }

std::string ColumnsToken(const std::vector<Column>& columns) {
  constexpr int kNullable = 1;
  Bytes out;
  out.U8(0x81).U16(columns.size());
  for (const Column& column : columns) {
    out.U32(0).U16(kNullable);
    WriteType(column, out);
    out.ShortText(column.name);
  }
  return out.Text();
}

std::size_t TimeSize(int scale) {
  if (scale <= 2) return 3;
  return scale <= 4 ? 4 : 5;
}

Row::Row(const std::vector<Column>& columns, bool compact) : columns_(columns), compact_(compact) {
  Begin();
}

void Row::Begin() {
  at_ = 0;
  values_.Clear();
  nulls_.assign((columns_.size() + 7) / 8, '\0');
}

const Column& Row::Next() {
  if (at_ == columns_.size()) throw ProtocolError("a row has more values than columns");
  return columns_[at_++];
}

const std::string& Row::Token() {
  if (at_ != columns_.size()) throw ProtocolError("a row has fewer values than columns");
  token_ = compact_ ? "\xD2" + nulls_ : "\xD1";
  token_ += values_.Text();
  Begin();
  return token_;
}

Row& Row::Null() {
  const Column& column = Next();
  if (compact_) {
    nulls_[(at_ - 1) / 8] = static_cast<char>(nulls_[(at_ - 1) / 8] | 1 << (at_ - 1) % 8);
    return *this;
  }
  const bool counted = column.IsText() || column.kind == Kind::kVarBinary;
  if (!counted) {
    values_.U8(0);
  } else if (column.size == Column::kMax) {
    values_.U64(~std::uint64_t{0});
  } else {
    values_.U16(0xFFFF);
  }
  return *this;
}

Row& Row::Whole(std::int64_t value) {
  const Column& column = Next();
  const std::size_t size = column.kind == Kind::kBit ? 1 : column.size;
  values_.U8(size).Number(static_cast<std::uint64_t>(value), size);
  return *this;
}

Row& Row::Real(double value) {
  const Column& column = Next();
  values_.U8(column.size);
  if (column.size == 4) {
    const auto single = static_cast<float>(value);
    values_.Raw({reinterpret_cast<const char*>(&single), sizeof single});
  } else {
    values_.Raw({reinterpret_cast<const char*>(&value), sizeof value});
  }
  return *this;
}

// The upper half of a money value stands in front of the lower one.
Row& Row::Money(std::int64_t value) {
  const Column& column = Next();
  const auto bits = static_cast<std::uint64_t>(value);
  values_.U8(column.size);
  if (column.size == 8) values_.U32(bits >> 32);
  values_.U32(bits);
  return *this;
}

Row& Row::Decimal(std::string_view text) {
  __extension__ using Wide = unsigned __int128;
  const Column& column = Next();
  const bool negative = text.starts_with('-');
  Wide magnitude = 0;
  int places = 0;
  bool behind = false;
  for (const char c : text.substr(negative ? 1 : 0)) {
    if (c == '.') {
      behind = true;
      continue;
    }
    magnitude = magnitude * 10 + static_cast<unsigned>(c - '0');
    places += behind ? 1 : 0;
  }
  if (places > column.scale) throw ProtocolError("a decimal has more places than its column");
  for (; places < column.scale; ++places) magnitude *= 10;
  const std::size_t size = DecimalSize(column.precision);
  values_.U8(size).U8(negative ? 0 : 1);
  for (std::size_t i = 1; i < size; ++i, magnitude >>= 8) {
    values_.U8(static_cast<std::uint8_t>(magnitude & 0xFF));
  }
  return *this;
}

void Row::Variable(const Column& column, std::string_view bytes) {
  if (column.size != Column::kMax) {
    if (bytes.size() > column.size) throw ProtocolError("a value is longer than its column");
    values_.U16(bytes.size()).Raw(bytes);
    return;
  }
  // Pieces of an odd size, so that they end within a character.
  constexpr std::size_t kPiece = 4001;
  values_.U64(bytes.size());
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, kPiece);
    values_.U32(piece.size()).Raw(piece);
    bytes.remove_prefix(piece.size());
  }
  values_.U32(0);
}

Row& Row::Text(std::string_view utf8) {
  const Column& column = Next();
  Variable(column, column.IsUnicode() ? ToUtf16(utf8) : ToCodePage(utf8));
  return *this;
}

Row& Row::Binary(std::string_view bytes) {
  Variable(Next(), bytes);
  return *this;
}

Row& Row::DateTime(std::int32_t days, std::uint32_t ticks) {
  const std::size_t half = Next().size / 2;
  values_.U8(2 * half).Number(static_cast<std::uint32_t>(days), half).Number(ticks, half);
  return *this;
}

Row& Row::Date(std::int64_t days) {
  Next();
  values_.U8(3).Number(static_cast<std::uint64_t>(days), 3);
  return *this;
}

Row& Row::Time(std::uint64_t units) {
  const std::size_t size = TimeSize(Next().scale);
  values_.U8(size).Number(units, size);
  return *this;
}

Row& Row::DateTime2(std::int64_t days, std::uint64_t units) {
  const std::size_t size = TimeSize(Next().scale);
  values_.U8(size + 3).Number(units, size).Number(static_cast<std::uint64_t>(days), 3);
  return *this;
}

Row& Row::Guid(std::string_view sixteen_bytes) {
  Next();
  values_.U8(16).Raw(sixteen_bytes);
  return *this;
}

}  // namespace vorek::tds
