#include "adapters/access/jet_row.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "adapters/access/jet_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::jet {
namespace {

constexpr std::size_t kLongestRow = 4060;
constexpr std::int64_t kLeastLong = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMostLong = std::numeric_limits<std::int32_t>::max();

template <typename Whole>
std::string Bytes(Whole value, std::size_t size = sizeof(Whole)) {
  std::string out;
  for (std::size_t i = 0; i < size; ++i) {
    out += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
  }
  return out;
}

[[noreturn]] void TooLarge(const Column& column) {
  throw Error(ErrorNumber::kOverflow, "مقدار در فيلد " + column.name + " جا نمي شود.");
}

std::int64_t Whole(const Column& column, std::string_view number, std::int64_t least,
                   std::int64_t most) {
  const double value = text::RoundHalfEven(text::NumericPrefix(number));
  if (!(value >= static_cast<double>(least) && value <= static_cast<double>(most))) {
    TooLarge(column);
  }
  return static_cast<std::int64_t>(value);
}

// The number's digits as a whole count of 10 to the power of -scale, halves to even; its sign
// apart.
struct Scaled {
  bool negative = false;
  std::uint64_t units = 0;
};

void AddDigit(const Column& column, Scaled& scaled, std::uint64_t digit) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (scaled.units > (kMost - digit) / 10) TooLarge(column);
  scaled.units = scaled.units * 10 + digit;
}

Scaled ToScaled(const Column& column, std::string_view number, std::size_t scale) {
  std::string digits = text::ExactNumber(number);
  Scaled scaled;
  scaled.negative = digits.starts_with('-');
  if (scaled.negative) digits.erase(0, 1);
  const auto is_part = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
  if (!std::ranges::all_of(digits, is_part)) TooLarge(column);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  std::string decimals = point < digits.size() ? digits.substr(point + 1) : "";
  for (const char c : digits.substr(0, point))
    AddDigit(column, scaled, static_cast<std::uint64_t>(c - '0'));
  const std::string rest = decimals.size() > scale ? decimals.substr(scale) : "";
  decimals.resize(scale, '0');
  for (const char c : decimals) AddDigit(column, scaled, static_cast<std::uint64_t>(c - '0'));
  const std::string half = "5" + std::string(rest.empty() ? 0 : rest.size() - 1, '0');
  if (!rest.empty() && (rest > half || (rest == half && scaled.units % 2 == 1))) ++scaled.units;
  return scaled;
}

std::string Money(const Column& column, std::string_view number) {
  const Scaled scaled = ToScaled(column, number, 4);
  if (scaled.units > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    TooLarge(column);
  }
  return Bytes(scaled.negative ? -static_cast<std::int64_t>(scaled.units)
                               : static_cast<std::int64_t>(scaled.units));
}

// A sign, then four groups of four bytes from the highest one down.
std::string Numeric(const Column& column, std::string_view number) {
  const Scaled scaled = ToScaled(column, number, column.scale);
  if (std::to_string(scaled.units).size() > column.precision) TooLarge(column);
  const bool negative = scaled.negative && scaled.units != 0;
  return std::string(1, negative ? '\x80' : '\0') + std::string(8, '\0') +
         Bytes(static_cast<std::uint32_t>(scaled.units >> 32U)) +
         Bytes(static_cast<std::uint32_t>(scaled.units));
}

std::string Single(const Column& column, double value) {
  if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) TooLarge(column);
  return Bytes(std::bit_cast<std::uint32_t>(static_cast<float>(value)));
}

// Days of the years 100 to 9999.
std::string Date(const Column& column, double value) {
  if (!(value > -657435.0 && value < 2958466.0)) TooLarge(column);
  return Bytes(std::bit_cast<std::uint64_t>(value));
}

// A memo that lies in its row.
std::string Memo(const std::string& text) {
  return Bytes(static_cast<std::uint32_t>(text.size()) | 0x80000000U) + std::string(8, '\0') + text;
}

// The letters as a text or a memo holds them; most is how many bytes they may be uncompressed.
std::string Letters(const Column& column, std::string_view text, std::size_t most) {
  std::string letters = ToUtf16(text);
  if (letters.size() > most) TooLarge(column);
  if (letters.starts_with("\xff\xfe")) {
    throw Error(ErrorNumber::kInvalidCall,
                "متن فيلد " + column.name + " با نشانه ترتيب بايتها آغاز مي شود.");
  }
  const bool plain = std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
  if (!column.compressed || !plain || text.size() <= 2) return letters;
  return "\xff\xfe" + std::string(text);
}

void PutFixed(std::string& row, const Column& column, const Value& value) {
  if (column.type == kBoolean) return;
  const std::size_t at = 2U + column.offset;
  if (row.size() < at + column.size) row.resize(at + column.size, '\0');
  if (!value) return;
  if (value->size() != column.size) Damaged();
  row.replace(at, column.size, *value);
}

// The variable values behind one another, then where each begins, the last one first.
void PutVariable(std::string& row, const std::vector<const std::string*>& parts) {
  if (parts.empty()) return;
  std::string offsets = Bytes(static_cast<std::uint16_t>(parts.size()));
  for (const std::string* const part : parts) {
    offsets.insert(0, Bytes(static_cast<std::uint16_t>(row.size())));
    if (part != nullptr) row += *part;
  }
  offsets.insert(0, Bytes(static_cast<std::uint16_t>(row.size())));
  row += offsets;
}

}  // namespace

Value FromLong(std::int32_t number) { return Bytes(static_cast<std::uint32_t>(number)); }

Value FromNumber(const Column& column, std::string_view number) {
  switch (column.type) {
    case kBoolean:
      return text::NumericPrefix(number) != 0 ? Value("") : std::nullopt;
    case kByte:
      return Bytes(Whole(column, number, 0, 255), 1);
    case kInteger:
      return Bytes(Whole(column, number, -32768, 32767), 2);
    case kLong:
      return Bytes(Whole(column, number, kLeastLong, kMostLong), 4);
    case kMoney:
      return Money(column, number);
    case kSingle:
      return Single(column, text::NumericPrefix(number));
    case kDouble:
      return Bytes(std::bit_cast<std::uint64_t>(text::NumericPrefix(number)));
    case kDate:
      return Date(column, text::NumericPrefix(number));
    case kNumeric:
      return Numeric(column, number);
    case kText:
      return FromText(column, number);
    case kMemo:
      return Memo(Letters(column, number, std::string::npos));
    default:
      throw Error(ErrorNumber::kTypeMismatch,
                  "فيلد " + column.name + " از نوعي است که پر نمي شود.");
  }
}

Value FromText(const Column& column, std::string_view text) {
  if (column.type != kText) return FromNumber(column, text);
  return Letters(column, text, column.size);
}

std::string MakeRow(const Table& table, const std::vector<Value>& values) {
  std::string row = Bytes(static_cast<std::uint16_t>(table.MostColumns()));
  std::string mask((table.MostColumns() + 7) / 8, '\0');
  std::vector<const std::string*> variable(table.VariableColumns(), nullptr);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Column& column = table.Columns()[i];
    if (column.fixed) PutFixed(row, column, values[i]);
    if (!values[i]) continue;
    mask[column.number / 8] |= static_cast<char>(1U << (column.number % 8U));
    if (!column.fixed) variable[column.variable] = &*values[i];
  }
  PutVariable(row, variable);
  row += mask;
  if (row.size() <= kLongestRow) return row;
  throw Error(ErrorNumber::kOverflow, "سطر از يک صفحه فايل اکسس بزرگتر است.");
}

std::optional<std::int32_t> ReadWhole(const JetFile& file, const JetFile::Span& row,
                                      const Column& column) {
  const std::size_t count = row.size < 2 ? 0 : file.Get16(row.page, row.at);
  const std::size_t mask = (count + 7) / 8;
  if (row.size < 2 + mask) Damaged();
  if (column.number >= count) return std::nullopt;
  const std::size_t at = row.at + row.size - mask + column.number / 8;
  if ((unsigned{file.Get8(row.page, at)} >> (column.number % 8U) & 1U) == 0) return std::nullopt;
  if (2U + column.offset + column.size + mask > row.size) Damaged();
  return static_cast<std::int32_t>(file.Get32(row.page, row.at + 2 + column.offset));
}

}  // namespace vorek::jet
