#include "adapters/access/jet_index.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "vorek/error.h"

namespace vorek::jet {
namespace {

constexpr std::size_t kEntriesAt = 480;
constexpr std::size_t kEndsAt = 27;  // a bit for each byte behind kEntriesAt
constexpr std::size_t kRoom = kPageSize - kEntriesAt;

// An entry as it lies in a leaf; a node's has the child's page behind it.
struct Item {
  std::string bytes;
  std::uint32_t child = 0;
};

std::string BigEndian(std::uint32_t value, std::size_t size) {
  std::string out;
  for (std::size_t i = size; i-- > 0;) out += static_cast<char>(value >> (8 * i));
  return out;
}

std::string EntryOf(std::int32_t key, RowPlace place) {
  return '\x7f' + BigEndian(static_cast<std::uint32_t>(key) ^ 0x80000000U, 4) +
         BigEndian(place.page, 3) + static_cast<char>(place.row);
}

// Pages of the old index first, then new ones; the root stays where it is.
class IndexPages {
 public:
  IndexPages(JetFile& file, const Index& index) : file_(file), index_(index) {
    for (const std::uint32_t page : file.PagesIn(index.pages)) {
      const std::uint8_t type = file.Get8(page, 0);
      if (type != kLeaf && type != kNode) Damaged();
      if (page != index.root) old_.push_back(page);
    }
    const std::uint8_t type = file.Get8(index.root, 0);
    if (type != kLeaf && type != kNode) Damaged();
  }

  std::uint32_t Take() {
    if (next_ < old_.size()) return old_[next_++];
    const std::uint32_t page = file_.NewPage();
    file_.Mark(index_.pages, page, true);
    return page;
  }

  // Pages that weren't needed stay the index's, as empty leaves that nothing leads to.
  void Rest(std::uint32_t owner);

  JetFile& File() { return file_; }

 private:
  JetFile& file_;
  const Index& index_;
  std::vector<std::uint32_t> old_;
  std::size_t next_ = 0;
};

void Begin(JetFile& file, std::uint32_t page, PageType type, std::uint32_t owner) {
  file.PutBytes(page, 0, std::string(kPageSize, '\0'));
  file.Put8(page, 0, type);
  file.Put8(page, 1, 1);
  file.Put16(page, 2, kRoom);
  file.Put32(page, 4, owner);
}

void IndexPages::Rest(std::uint32_t owner) {
  for (; next_ < old_.size(); ++next_) Begin(file_, old_[next_], kLeaf, owner);
}

void WriteItems(JetFile& file, std::uint32_t page, PageType type, const Item* items,
                std::size_t count) {
  std::size_t at = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string bytes =
        items[i].bytes + (type == kNode ? BigEndian(items[i].child, 4) : std::string());
    file.PutBytes(page, kEntriesAt + at, bytes);
    at += bytes.size();
    const std::uint8_t ends = file.Get8(page, kEndsAt + at / 8);
    file.Put8(page, kEndsAt + at / 8, static_cast<std::uint8_t>(ends | 1U << (at % 8)));
  }
  file.Put16(page, 2, static_cast<std::uint32_t>(kRoom - at));
}

// One level of the tree; returns the entries of the level above, none if this one is the root.
std::vector<Item> WriteLevel(IndexPages& pages, const std::vector<Item>& items, PageType type,
                             std::uint32_t owner, std::uint32_t root) {
  JetFile& file = pages.File();
  const std::size_t size = type == kNode ? 13 : 9;
  const std::size_t most = kRoom / size;
  std::vector<Item> above;
  const bool is_root = items.size() <= most;
  for (std::size_t first = 0; first == 0 || first < items.size(); first += most) {
    const std::size_t count = std::min(most, items.size() - first);
    const std::uint32_t page = is_root ? root : pages.Take();
    Begin(file, page, type, owner);
    WriteItems(file, page, type, items.data() + first, count);
    if (is_root) break;
    if (!above.empty()) {
      file.Put32(page, 12, above.back().child);
      file.Put32(above.back().child, 16, page);
    }
    above.push_back({items[first + count - 1].bytes, page});
  }
  return above;
}

}  // namespace

IndexBuilder::IndexBuilder(const Table& table, const Index& index, const std::string& table_name)
    : index_(index),
      column_(table.ByNumber(index.keys.empty() ? std::uint16_t{0} : index.keys[0].column)) {
  const bool plain = index.keys.size() == 1 && index.keys[0].ascending;
  if (plain && column_.type == kLong && column_.fixed && column_.size == 4) return;
  throw Error(
      ErrorNumber::kInvalidCall,
      "جدول " + table_name +
          " ايندکسي دارد که نوشته نمي شود؛ تنها ايندکس روي يک فيلد عدد صحيح بلند پذيرفته است.");
}

void IndexBuilder::Add(std::int32_t key, RowPlace place) {
  if (index_.unique) keys_.insert(key);
  entries_.push_back({key, place});
}

void IndexBuilder::Write(JetFile& file, Table& table) {
  std::ranges::sort(entries_, {}, [](const Entry& entry) {
    return std::tuple(entry.key, entry.place.page, entry.place.row);
  });
  std::vector<Item> items;
  items.reserve(entries_.size());
  for (const Entry& entry : entries_) items.push_back({EntryOf(entry.key, entry.place)});
  IndexPages pages(file, index_);
  PageType type = kLeaf;
  while (type == kLeaf || !items.empty()) {
    items = WriteLevel(pages, items, type, table.Page(), index_.root);
    type = kNode;
  }
  pages.Rest(table.Page());
  table.SetEntries(index_, static_cast<std::uint32_t>(entries_.size()));
}

}  // namespace vorek::jet
