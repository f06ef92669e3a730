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
  if (digits.find_first_not_of("0123456789.") != std::string::npos) TooLarge(column);
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

std::string Letters(const Column& column, std::string_view text) {
  std::string letters = ToUtf16(text);
  if (letters.starts_with("\xff\xfe")) {
    throw Error(ErrorNumber::kInvalidCall,
                "متن فيلد " + column.name + " با نشانه ترتيب بايتها آغاز مي شود.");
  }
  const bool plain = std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
  if (!column.compressed || !plain || text.size() <= 2) return letters;
  return "\xff\xfe" + std::string(text);
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
      return Bytes(Whole(column, number, std::numeric_limits<std::int32_t>::min(),
                         std::numeric_limits<std::int32_t>::max()),
                   4);
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
      return Memo(Letters(column, number));
    default:
      throw Error(ErrorNumber::kTypeMismatch,
                  "فيلد " + column.name + " از نوعي است که پر نمي شود.");
  }
}

Value FromText(const Column& column, std::string_view text) {
  if (column.type != kText) return FromNumber(column, text);
  if (ToUtf16(text).size() > column.size) TooLarge(column);
  return Letters(column, text);
}

std::string MakeRow(const Table& table, const std::vector<Value>& values) {
  const std::vector<Column>& columns = table.Columns();
  std::string mask((table.MostColumns() + 7) / 8, '\0');
  std::string fixed;
  std::vector<std::string> variable(table.VariableColumns());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const Column& column = columns[i];
    if (column.fixed && column.type != kBoolean) {
      fixed.resize(std::max<std::size_t>(fixed.size(), column.offset + column.size), '\0');
    }
    if (!values[i]) continue;
    mask[column.number / 8] |= static_cast<char>(1U << (column.number % 8U));
    if (column.type == kBoolean) continue;
    if (!column.fixed) {
      variable[column.variable] = *values[i];
    } else if (values[i]->size() != column.size) {
      Damaged();
    } else {
      fixed.replace(column.offset, column.size, *values[i]);
    }
  }
  std::string row = Bytes(static_cast<std::uint16_t>(table.MostColumns())) + fixed;
  if (!variable.empty()) {
    std::vector<std::size_t> offsets;
    for (const std::string& part : variable) {
      offsets.push_back(row.size());
      row += part;
    }
    offsets.push_back(row.size());
    std::ranges::reverse(offsets);
    for (const std::size_t offset : offsets) row += Bytes(static_cast<std::uint16_t>(offset));
    row += Bytes(static_cast<std::uint16_t>(variable.size()));
  }
  row += mask;
  if (row.size() > kLongestRow) {
    throw Error(ErrorNumber::kOverflow, "سطر از يک صفحه فايل اکسس بزرگتر است.");
  }
  return row;
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
