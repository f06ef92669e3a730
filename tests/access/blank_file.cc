#include "access/blank_file.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <set>
#include <utility>

#include "adapters/access/jet_file.h"
#include "adapters/access/jet_row.h"
#include "adapters/access/jet_table.h"
#include "adapters/access/jet_text.h"

namespace vorek {
namespace {

constexpr std::size_t kPage = 4096;
enum Page : std::uint32_t { kFree = 1, kObjects, kMaps, kCatalogue, kTablePage, kRoot, kPages };

std::string Little(std::uint64_t value, std::size_t size) {
  std::string out;
  for (std::size_t i = 0; i < size; ++i) {
    out += i < sizeof value ? static_cast<char>(value >> (8 * i)) : '\0';
  }
  return out;
}

std::string Padded(std::string bytes, std::size_t size = kPage) {
  bytes.resize(size, '\0');
  return bytes;
}

// Encrypts and decrypts the header.
std::string Rc4(std::string text) {
  const std::uint8_t key[] = {0xc7, 0xda, 0x39, 0x6b};
  std::vector<std::uint8_t> state(256);
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  for (std::size_t i = 0, j = 0; i < 256; ++i) {
    j = (j + state[i] + key[i % 4]) % 256;
    std::swap(state[i], state[j]);
  }
  std::size_t i = 0;
  std::size_t j = 0;
  for (char& c : text) {
    i = (i + 1) % 256;
    j = (j + state[i]) % 256;
    std::swap(state[i], state[j]);
    c = static_cast<char>(static_cast<std::uint8_t>(c) ^ state[(state[i] + state[j]) % 256U]);
  }
  return text;
}

std::string Header() {
  std::string page("\0\1\0\0Standard Jet DB\0", 20);
  page += Little(1, 4);
  std::string hidden(128, '\0');
  hidden.replace(0x3c - 0x18, 2, Little(1252, 2));
  return Padded(page + Rc4(hidden));
}

std::string DataPage(std::uint32_t owner, const std::vector<std::string>& rows) {
  std::string slots;
  std::string body;
  for (const std::string& row : rows) {
    body.insert(0, row);
    slots += Little(kPage - body.size(), 2);
  }
  const std::size_t room = kPage - 14 - slots.size() - body.size();
  return std::string("\1\1", 2) + Little(room, 2) + Little(owner, 4) + Little(0, 4) +
         Little(rows.size(), 2) + slots + std::string(room, '\0') + body;
}

std::string InlineMap(std::uint32_t bits, const std::vector<std::uint32_t>& pages) {
  std::string map(bits / 8, '\0');
  for (const std::uint32_t page : pages) {
    map[page / 8] = static_cast<char>(map[page / 8] | (1 << (page % 8)));
  }
  return std::string(5, '\0') + map;
}

bool IsFixed(std::uint8_t type) { return type < 9 || type == 16; }

std::uint16_t SizeOf(const BlankField& field) {
  static const std::map<std::uint8_t, std::uint16_t> sizes = {
      {1, 0}, {2, 1}, {3, 2}, {4, 4}, {5, 8}, {6, 4}, {7, 8}, {8, 8}, {11, 0}, {12, 0}, {16, 17}};
  const auto found = sizes.find(field.type);
  return found == sizes.end() ? field.size : found->second;
}

std::string Definition(char kind, const std::vector<BlankField>& fields, std::uint32_t owned,
                       std::uint32_t room, std::int32_t key, std::uint32_t key_map) {
  std::string columns;
  std::string names;
  std::size_t offset = 0;
  std::size_t variable = 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const BlankField& field = fields[i];
    const bool fixed = IsFixed(field.type);
    const std::string extra = field.type == 16 ? std::string("\22\4", 2) : std::string(2, '\0');
    columns += Little(field.type, 1) + Little(0, 4) + Little(i, 2) + Little(variable, 2) +
               Little(i, 2) + extra + Little(0, 2) +
               Little((fixed ? 1U : 0U) + 2U + (field.autonumber ? 4U : 0U), 1) +
               Little(field.compressed ? 1 : 0, 1) + Little(0, 4) + Little(fixed ? offset : 0, 2) +
               Little(SizeOf(field), 2);
    const std::string name = jet::ToUtf16(field.name);
    names += Little(name.size(), 2) + name;
    if (fixed) offset += SizeOf(field);
    if (!fixed) ++variable;
  }
  const std::size_t indexes = key < 0 ? 0 : 1;
  std::string text = std::string("\2\1\0\0", 4) + Little(0, 4) + Little(0, 4) + Little(0, 4) +
                     Little(0, 4) + Little(0, 4) + Little(1, 4) + Little(0, 12);
  text += std::string(1, kind) + Little(fields.size(), 2) + Little(variable, 2) +
          Little(fields.size(), 2) + Little(indexes, 4) + Little(indexes, 4) + Little(owned, 4) +
          Little(room, 4) + std::string(12 * indexes, '\0') + columns + names;
  if (key >= 0) {
    text += Little(0, 4) + Little(static_cast<std::uint32_t>(key), 2) + '\1';
    for (int i = 1; i < 10; ++i) text += Little(0xffff, 2) + '\0';
    text += Little(key_map, 4) + Little(kRoot, 4) + '\x9' + std::string(9, '\0');
    text += std::string(8, '\0') + Little(0, 4) + '\0' + Little(0xffffffff, 4) + Little(0, 6) +
            '\1' + std::string(4, '\0');
    const std::string name = jet::ToUtf16("PrimaryKey");
    text += Little(name.size(), 2) + name;
  }
  text += Little(0xffff, 2);
  text.replace(8, 4, Little(text.size(), 4));
  return Padded(text);
}

std::string Chunk(std::uint16_t type, const std::string& body) {
  return Little(body.size() + 6, 4) + Little(type, 2) + body;
}

// The properties of all fields, as the catalogue's row holds them.
std::string Properties(const std::vector<BlankField>& fields) {
  std::vector<std::string> known;
  std::string values;
  for (const BlankField& field : fields) {
    const std::string name = jet::ToUtf16(field.name);
    std::string body = Little(name.size() + 6, 2) + Little(0, 2) + Little(name.size(), 2) + name;
    for (const auto& [property, value] : field.properties) {
      if (std::ranges::find(known, property) == known.end()) known.push_back(property);
      const auto number = std::ranges::find(known, property) - known.begin();
      const bool boolean = value == "yes" || value == "no";
      const std::string bytes =
          boolean ? std::string(1, value == "yes" ? '\xff' : '\0') : jet::ToUtf16(value);
      body += Little(bytes.size() + 8, 2) + '\1' + static_cast<char>(boolean ? 1 : 10) +
              Little(static_cast<std::uint64_t>(number), 2) + Little(bytes.size(), 2) + bytes;
    }
    if (!field.properties.empty()) values += Chunk(1, body);
  }
  std::string names;
  for (const std::string& property : known) {
    const std::string name = jet::ToUtf16(property);
    names += Little(name.size(), 2) + name;
  }
  return known.empty() ? "" : std::string("MR2\0", 4) + Chunk(0x80, names) + values;
}

}  // namespace

void BlankFile::Catalogue(jet::JetFile& file) const {
  jet::Table catalogue(file, kObjects);
  const std::string properties = Properties(fields);
  const jet::Value held = properties.empty()
                              ? std::nullopt
                              : jet::Value(Little(properties.size() | 0x80000000U, 4) +
                                           std::string(8, '\0') + properties);
  const auto row = [&](std::int32_t id, const std::string& name, std::int32_t with_flags,
                       const jet::Value& with) {
    return jet::MakeRow(catalogue, {jet::FromLong(id), jet::FromLong(0), jet::ToUtf16(name),
                                    Little(1, 2), jet::FromLong(with_flags), with});
  };
  file.PutBytes(kCatalogue, 0,
                DataPage(kObjects, {row(kObjects, "MSysObjects",
                                        static_cast<std::int32_t>(0x80000000U), std::nullopt),
                                    row(kTablePage, table, flags, held)}));
  catalogue.SetRows(2);
}

std::string BlankFile::Bytes() const {
  const std::vector<BlankField> objects = {{"Id", 4},   {"ParentId", 4}, {"Name", 10, 128},
                                           {"Type", 3}, {"Flags", 4},    {"LvProp", 11}};
  std::vector<std::uint32_t> free(map_bits - kPages);
  std::iota(free.begin(), free.end(), std::uint32_t{kPages});
  const auto place = [](std::uint32_t row) { return kMaps << 8U | row; };
  std::string bytes =
      Header() + DataPage(0, {InlineMap(map_bits, free)}) +
      Definition('S', objects, place(0), place(1), -1, 0) +
      DataPage(kObjects,
               {InlineMap(map_bits, {kCatalogue}), InlineMap(map_bits, {}), InlineMap(map_bits, {}),
                InlineMap(map_bits, {}), InlineMap(map_bits, {kRoot})}) +
      Padded("") + Definition('N', fields, place(2), place(3), key, place(4)) +
      Padded(std::string("\4\1", 2) + Little(kPage - 480, 2) + Little(kTablePage, 4));
  jet::JetFile file(bytes);
  Catalogue(file);
  return file.Bytes();
}

namespace {

struct IndexWalk {
  const jet::JetFile& file;
  std::set<std::uint32_t> pages;
  std::vector<std::string> entries;
  std::vector<std::uint32_t> leaves;

  std::string Walk(std::uint32_t page) {
    if (!pages.insert(page).second) return "an index page is reached twice";
    const std::uint8_t type = file.Get8(page, 0);
    if (file.Get32(page, 4) != kTablePage) return "an index page of another owner";
    const std::size_t end = kPage - 480 - file.Get16(page, 2);
    if (type == 4) leaves.push_back(page);
    for (std::size_t at = 0, begin = 0; at++ < end;) {
      if ((file.Get8(page, 27 + at / 8) >> (at % 8) & 1) == 0) continue;
      const std::string entry = file.Bytes().substr(page * kPage + 480 + begin, at - begin);
      begin = at;
      if (type == 4) {
        entries.push_back(entry);
        continue;
      }
      if (entry.size() != 13) return "a node's entry of another size";
      std::uint32_t child = 0;
      for (std::size_t i = 9; i < 13; ++i)
        child = child << 8U | static_cast<std::uint8_t>(entry[i]);
      if (const std::string wrong = Walk(child); !wrong.empty()) return wrong;
      if (entries.back() != entry.substr(0, 9)) return "a node that doesn't tell its child's end";
    }
    return "";
  }
};

// What a map of free pages says of a page; one that it doesn't reach is free.
bool IsFree(const jet::JetFile& file, std::uint32_t page) {
  constexpr std::uint32_t kBits = (kPage - 4) * 8;
  const jet::JetFile::Span row = file.Row({kFree, 0});
  const auto bit = [&](std::uint32_t in, std::size_t at, std::uint32_t number) {
    return (file.Get8(in, at + number / 8) >> (number % 8) & 1) != 0;
  };
  if (file.Get8(row.page, row.at) == 0) {
    return page >= (row.size - 5) * 8 || bit(row.page, row.at + 5, page);
  }
  const std::uint32_t map = file.Get32(row.page, row.at + 1 + std::size_t{4} * (page / kBits));
  return map == 0 || bit(map, 4, page % kBits);
}

// Goes through a file and notes what its pages belong to. Each check says what is wrong, "" for
// nothing.
class FileWalk {
 public:
  explicit FileWalk(const std::string& bytes) : file_(bytes), table_(file_, kTablePage) {}

  std::string Free() const;
  std::string Rows();
  std::string IndexOver(const jet::Index& index);
  std::string Owners();
  const jet::Table& Definition() const { return table_; }

 private:
  std::string RowsOn(std::uint32_t page);
  std::string Entries(const IndexWalk& walk);
  std::string Leaves(const IndexWalk& walk) const;
  void OwnMapPages();

  jet::JetFile file_;
  jet::Table table_;
  std::vector<std::uint32_t> owned_ = {0, kFree, kObjects, kMaps, kCatalogue, kTablePage};
  std::vector<jet::RowPlace> maps_ = {table_.Owned(), table_.WithRoom(), {kFree, 0}};
  std::set<std::string> places_;  // of rows, as an index's entry tells them
  std::size_t rows_ = 0;
};

std::string FileWalk::Free() const {
  for (std::uint32_t page = 0; page < file_.Pages(); ++page) {
    if (IsFree(file_, page)) return "a page in use that counts as free";
  }
  return "";
}

std::string FileWalk::RowsOn(std::uint32_t page) {
  owned_.push_back(page);
  const std::size_t count = file_.Get16(page, 12);
  std::size_t used = 0;
  for (std::size_t row = 0; row < count; ++row) {
    used += file_.Row({page, static_cast<std::uint8_t>(row)}).size;
    std::string place;
    for (int i = 2; i >= 0; --i) place += static_cast<char>(page >> (8 * i));
    places_.insert(place + static_cast<char>(row));
  }
  rows_ += count;
  const bool right = file_.Get16(page, 2) == kPage - 14 - 2 * count - used;
  return right ? "" : "free bytes of a data page";
}

std::string FileWalk::Rows() {
  const std::vector<std::uint32_t> data = file_.PagesIn(table_.Owned());
  for (const std::uint32_t page : data) {
    if (const std::string wrong = RowsOn(page); !wrong.empty()) return wrong;
  }
  if (rows_ != table_.Rows()) return "the count of rows";
  const std::vector<std::uint32_t> with_room = file_.PagesIn(table_.WithRoom());
  if (with_room.size() > 1) return "room on pages that are full";
  for (const std::uint32_t page : with_room) {
    if (std::ranges::find(data, page) == data.end()) return "room on a page that isn't owned";
  }
  if (table_.Indexes().empty()) owned_.push_back(kRoot);
  return "";
}

std::string FileWalk::Entries(const IndexWalk& walk) {
  std::string before;
  for (const std::string& entry : walk.entries) {
    if (entry.size() != 9 || places_.erase(entry.substr(5)) == 0) return "an entry without a row";
    if (!before.empty() && before >= entry.substr(0, 5)) return "the order of keys";
    before = entry.substr(0, 5);
  }
  return places_.empty() ? "" : "a row without an entry";
}

std::string FileWalk::Leaves(const IndexWalk& walk) const {
  for (std::size_t i = 1; i < walk.leaves.size(); ++i) {
    if (file_.Get32(walk.leaves[i], 12) != walk.leaves[i - 1] ||
        file_.Get32(walk.leaves[i - 1], 16) != walk.leaves[i]) {
      return "the neighbours of leaves";
    }
  }
  return "";
}

std::string FileWalk::IndexOver(const jet::Index& index) {
  maps_.push_back(index.pages);
  IndexWalk walk{file_, {}, {}, {}};
  if (const std::string wrong = walk.Walk(index.root); !wrong.empty()) return wrong;
  if (const std::string wrong = Entries(walk); !wrong.empty()) return wrong;
  if (const std::string wrong = Leaves(walk); !wrong.empty()) return wrong;
  if (file_.Get32(kTablePage, index.at) != walk.entries.size()) return "the count of entries";
  const std::vector<std::uint32_t> pages = file_.PagesIn(index.pages);
  if (!std::ranges::includes(pages, walk.pages)) return "an index page out of the index's map";
  owned_.insert(owned_.end(), pages.begin(), pages.end());
  return "";
}

void FileWalk::OwnMapPages() {
  for (const jet::RowPlace map : maps_) {
    const jet::JetFile::Span row = file_.Row(map);
    if (file_.Get8(row.page, row.at) == 0) continue;
    for (std::size_t i = 1; i + 3 < row.size; i += 4) {
      if (const std::uint32_t page = file_.Get32(row.page, row.at + i)) owned_.push_back(page);
    }
  }
}

std::string FileWalk::Owners() {
  OwnMapPages();
  std::ranges::sort(owned_);
  std::vector<std::uint32_t> all(file_.Pages());
  std::iota(all.begin(), all.end(), std::uint32_t{0});
  return owned_ == all ? "" : "pages that are owned by nobody or twice";
}

}  // namespace

std::string WhatIsWrong(const std::string& bytes) {
  FileWalk walk(bytes);
  if (const std::string wrong = walk.Free(); !wrong.empty()) return wrong;
  if (const std::string wrong = walk.Rows(); !wrong.empty()) return wrong;
  for (const jet::Index& index : walk.Definition().Indexes()) {
    if (const std::string wrong = walk.IndexOver(index); !wrong.empty()) return wrong;
  }
  return walk.Owners();
}

}  // namespace vorek
