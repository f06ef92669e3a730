#include "adapters/access/jet_table.h"

#include <algorithm>

#include "adapters/access/jet_text.h"

namespace vorek::jet {
namespace {

constexpr std::size_t kColumnsAt = 63;
constexpr std::size_t kCountSize = 12;
constexpr std::size_t kColumnSize = 25;
constexpr std::size_t kIndexSize = 52;
constexpr std::size_t kKeys = 10;
constexpr std::size_t kHead = 8;  // of a page of a definition behind the first
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kMostIndexes = 32;

}  // namespace

Table::Table(JetFile& file, std::uint32_t page) : file_(file) {
  for (std::uint32_t next = page; next != 0; next = file.Get32(next, 4)) {
    if (file.Get8(next, 0) != kTable || std::ranges::count(pages_, next) != 0) Damaged();
    text_ += file.Bytes().substr(next * kPageSize + (pages_.empty() ? 0 : kHead),
                                 kPageSize - (pages_.empty() ? 0 : kHead));
    pages_.push_back(next);
  }
  if (pages_.empty()) Damaged();
  const std::size_t count = Get16(45);
  const std::size_t indexes = Get32(51);
  if (std::max({count, MostColumns(), VariableColumns()}) > kMostColumns) Damaged();
  if (indexes > kMostIndexes) Damaged();
  const std::size_t first = kColumnsAt + kCountSize * indexes;
  for (std::size_t i = 0; i < count; ++i) columns_.push_back(ReadColumn(first + kColumnSize * i));
  std::size_t at = first + kColumnSize * count;
  for (Column& column : columns_) column.name = ReadName(at);
  ReadIndexes(at);
}

std::uint8_t Table::Get8(std::size_t at) const {
  if (at >= text_.size()) Damaged();
  return static_cast<std::uint8_t>(text_[at]);
}

std::uint16_t Table::Get16(std::size_t at) const {
  return static_cast<std::uint16_t>(Get8(at) | (Get8(at + 1) << 8U));
}

std::uint32_t Table::Get32(std::size_t at) const {
  return Get16(at) | (static_cast<std::uint32_t>(Get16(at + 2)) << 16U);
}

// Only what lies on the first page is ever written: counts stand in front of the columns.
void Table::Put32(std::size_t at, std::uint32_t value) {
  file_.Put32(Page(), at, value);
  for (std::size_t i = 0; i < 4; ++i) text_[at + i] = static_cast<char>(value >> (8 * i));
}

Column Table::ReadColumn(std::size_t at) const {
  Column column;
  column.type = Get8(at);
  column.number = Get16(at + 5);
  column.variable = Get16(at + 7);
  column.ordinal = Get16(at + 9);
  column.precision = Get8(at + 11);
  column.scale = Get8(at + 12);
  const std::uint8_t flags = Get8(at + 15);
  column.fixed = (flags & 1U) != 0;
  column.autonumber = (flags & 4U) != 0;
  column.compressed = (Get8(at + 16) & 1U) != 0;
  column.offset = Get16(at + 21);
  column.size = Get16(at + 23);
  if (column.number >= MostColumns()) Damaged();
  if (!column.fixed && column.variable >= VariableColumns()) Damaged();
  if (column.fixed && column.offset + column.size > static_cast<int>(kPageSize)) Damaged();
  return column;
}

std::string Table::ReadName(std::size_t& at) const {
  const std::size_t size = Get16(at);
  if (at + 2 + size > text_.size()) Damaged();
  std::string name = FromUtf16(std::string_view(text_).substr(at + 2, size));
  at += 2 + size;
  return name;
}

void Table::ReadIndexes(std::size_t at) {
  const std::size_t count = Get32(51);
  for (std::size_t i = 0; i < count; ++i, at += kIndexSize) {
    Index index;
    for (std::size_t k = 0; k < kKeys; ++k) {
      const std::uint16_t column = Get16(at + 4 + 3 * k);
      if (column != 0xffff) index.keys.push_back({column, Get8(at + 6 + 3 * k) == 1});
    }
    index.pages = PlaceAt(at + 34);
    index.root = Get32(at + 38);
    const std::uint8_t flags = Get8(at + 42);
    index.unique = (flags & 1U) != 0;
    index.ignores_nulls = (flags & 2U) != 0;
    index.required = (flags & 8U) != 0;
    index.at = kColumnsAt + kCountSize * i + 4;
    indexes_.push_back(std::move(index));
  }
  constexpr std::size_t kNameSize = 28;
  constexpr std::size_t kKindAt = 23;
  constexpr std::uint8_t kRelation = 2;
  const std::size_t names = Get32(47);
  for (std::size_t i = 0; i < names; ++i) {
    related_ = related_ || Get8(at + kNameSize * i + kKindAt) == kRelation;
  }
}

const Column& Table::ByNumber(std::uint16_t number) const {
  const auto found = std::ranges::find(columns_, number, &Column::number);
  if (found == columns_.end()) Damaged();
  return *found;
}

}  // namespace vorek::jet
