#include "adapters/access/jet_append.h"

#include <algorithm>
#include <limits>

#include "vorek/error.h"

namespace vorek::jet {
namespace {

constexpr std::size_t kSlotsAt = 14;
constexpr std::uint16_t kMostRows = 255;  // of a page
constexpr std::uint16_t kDeleted = 0x8000;
constexpr std::uint16_t kElsewhere = 0x4000;

std::int32_t LongOf(const std::string& bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace

Appender::Appender(JetFile& file, std::uint32_t page, const std::string& table_name)
    : file_(file), table_(file, page), name_(table_name), last_number_(table_.LastNumber()) {
  if (!table_.OfUser()) {
    throw Error(ErrorNumber::kInvalidCall, "جدول " + name_ + " جدول سيستم است.");
  }
  if (table_.Related()) {
    throw Error(ErrorNumber::kInvalidCall, "جدول " + name_ + " با جدولهاي ديگر رابطه دارد.");
  }
  file_.CheckFreePages();  // not first met by the row that needs a page
  for (const Index& index : table_.Indexes()) indexes_.emplace_back(table_, index, name_);
  ReadRows();
}

// The keys of the rows that are there, and the page that has room.
void Appender::ReadRows() {
  for (const std::uint32_t page : file_.PagesIn(table_.Owned())) {
    if (file_.Get8(page, 0) != kData || file_.Get32(page, 4) != table_.Page()) Damaged();
    const std::uint16_t count = file_.Get16(page, 12);
    for (std::uint16_t row = 0; row < count; ++row) {
      if (row > std::numeric_limits<std::uint8_t>::max()) Damaged();
      ReadRow({page, static_cast<std::uint8_t>(row)});
    }
  }
  if (rows_ != table_.Rows()) Damaged();
  const std::vector<std::uint32_t> with_room = file_.PagesIn(table_.WithRoom());
  if (with_room.empty()) return;
  page_ = with_room.back();
  if (file_.Get8(page_, 0) != kData || file_.Get32(page_, 4) != table_.Page()) Damaged();
}

void Appender::ReadRow(RowPlace place) {
  const std::uint16_t flags =
      file_.Get16(place.page, kSlotsAt + 2 * static_cast<std::size_t>(place.row));
  JetFile::Span span = file_.Row(place);
  if ((flags & kDeleted) != 0) return;
  if ((flags & kElsewhere) != 0) {
    if (span.size < 4) Damaged();
    const std::uint32_t to = file_.Get32(span.page, span.at);
    span = file_.Row({to >> 8U, static_cast<std::uint8_t>(to)});
  }
  ++rows_;
  for (IndexBuilder& index : indexes_) {
    const auto key = ReadWhole(file_, span, index.Of());
    if (key ? !index.Takes(*key) : !index.TakesNull()) Damaged();
    if (!key) continue;
    index.Add(*key, place);
    // The number that the table keeps may be behind: rows can be put in with numbers of their own.
    if (index.Of().autonumber) NoteNumber(*key);
  }
}

void Appender::NoteNumber(std::int32_t number) {
  if (number > 0) last_number_ = std::max(last_number_, static_cast<std::uint32_t>(number));
}

void Appender::NumberRow(std::vector<Value>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Column& column = table_.Columns()[i];
    if (!column.autonumber || values[i]) continue;
    if (column.type != kLong || last_number_ >= 0x7fffffffU) {
      throw Error(ErrorNumber::kOverflow, "فيلد " + column.name + " شماره اي نمي گيرد.");
    }
    values[i] = FromLong(static_cast<std::int32_t>(last_number_ + 1));
  }
}

std::optional<std::int32_t> Appender::KeyOf(const IndexBuilder& index,
                                            const std::vector<Value>& values) const {
  const auto column = static_cast<std::size_t>(&index.Of() - table_.Columns().data());
  if (!values[column]) return std::nullopt;
  return LongOf(*values[column]);
}

void Appender::Append(std::vector<Value> values) {
  NumberRow(values);
  const std::string row = MakeRow(table_, values);
  for (const IndexBuilder& index : indexes_) {
    const auto key = KeyOf(index, values);
    if (key ? index.Takes(*key) : index.TakesNull()) continue;
    throw Error(
        ErrorNumber::kInvalidCall,
        key ? "مقدار " + std::to_string(*key) + " در فيلد " + index.Of().name + " تکراري است."
            : "فيلد " + index.Of().name + " نمي تواند خالي باشد.");
  }
  const RowPlace place = Put(row);
  ++rows_;
  for (IndexBuilder& index : indexes_) {
    if (const auto key = KeyOf(index, values)) index.Add(*key, place);
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Column& column = table_.Columns()[i];
    if (!column.autonumber || column.type != kLong) continue;
    NoteNumber(LongOf(*values[i]));
  }
}

bool Appender::Fits(std::size_t size) const {
  return page_ != 0 && file_.Get16(page_, 12) < kMostRows && file_.Get16(page_, 2) >= size + 2;
}

void Appender::BeginPage() {
  if (page_ != 0) file_.Mark(table_.WithRoom(), page_, false);
  page_ = file_.NewPage();
  file_.Put16(page_, 0, 0x0101);
  file_.Put16(page_, 2, kPageSize - kSlotsAt);
  file_.Put32(page_, 4, table_.Page());
  file_.Mark(table_.Owned(), page_, true);
  file_.Mark(table_.WithRoom(), page_, true);
}

RowPlace Appender::Put(const std::string& row) {
  if (!Fits(row.size())) BeginPage();
  const std::uint16_t count = file_.Get16(page_, 12);
  const std::size_t slot = kSlotsAt + 2 * static_cast<std::size_t>(count);
  const std::size_t end = count == 0 ? kPageSize : file_.Get16(page_, slot - 2) & 0x1fffU;
  if (end < slot + 2 + row.size()) Damaged();
  file_.PutBytes(page_, end - row.size(), row);
  file_.Put16(page_, slot, static_cast<std::uint32_t>(end - row.size()));
  file_.Put16(page_, 12, count + 1U);
  file_.Put16(page_, 2, static_cast<std::uint32_t>(file_.Get16(page_, 2) - row.size() - 2));
  return {page_, static_cast<std::uint8_t>(count)};
}

void Appender::Finish() {
  for (IndexBuilder& index : indexes_) index.Write(file_, table_);
  table_.SetRows(rows_);
  table_.SetLastNumber(last_number_);
}

}  // namespace vorek::jet
