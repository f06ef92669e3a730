#include "adapters/access/jet_file.h"

#include <array>
#include <cstring>
#include <numeric>
#include <utility>

#include "vorek/error.h"

namespace vorek::jet {
namespace {

constexpr RowPlace kFreePages = {1, 0};
constexpr std::size_t kBitsAMapPage = (kPageSize - 4) * 8;
constexpr std::uint32_t kMostPages = 500000;  // of the 2 gigabytes that such a file can have

[[noreturn]] void Refuse(const std::string& why) { throw Error(ErrorNumber::kInvalidCall, why); }

// RC4 by the key that every file's header is written with.
std::string PlainHeader(std::string text) {
  constexpr std::array<std::uint8_t, 4> key = {0xc7, 0xda, 0x39, 0x6b};
  std::array<std::uint8_t, 256> state{};
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  for (std::size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + key[i % key.size()]) % state.size();
    std::swap(state[i], state[j]);
  }
  std::size_t i = 0;
  std::size_t j = 0;
  for (char& c : text) {
    i = (i + 1) % state.size();
    j = (j + state[i]) % state.size();
    std::swap(state[i], state[j]);
    const auto stream = state[(state[i] + state[j]) % state.size()];
    c = static_cast<char>(static_cast<std::uint8_t>(c) ^ stream);
  }
  return text;
}

constexpr std::size_t kHeaderAt = 0x18;

// The password lies under the file's day of creation, byte by byte.
bool HasPassword(const std::string& header) {
  constexpr std::size_t kPassword = 0x42 - kHeaderAt;
  constexpr std::size_t kPasswordSize = 40;
  constexpr std::size_t kCreated = 0x72 - kHeaderAt;
  double created = 0;
  std::memcpy(&created, header.data() + kCreated, sizeof created);
  if (!(created > -2147483648.0 && created < 2147483647.0)) Damaged();
  const auto day = static_cast<std::uint32_t>(static_cast<std::int32_t>(created));
  for (std::size_t i = 0; i < kPasswordSize; ++i) {
    const auto cover = static_cast<std::uint8_t>(day >> (8 * (i % 4)));
    if (static_cast<std::uint8_t>(header[kPassword + i]) != cover) return true;
  }
  return false;
}

}  // namespace

void Damaged() { Refuse("فايل اکسس خراب است."); }

JetFile::JetFile(std::string bytes) : bytes_(std::move(bytes)) {
  constexpr std::size_t kKey = 0x3e - kHeaderAt;
  if (bytes_.size() < 3 * kPageSize || bytes_.compare(0, 4, std::string("\0\1\0\0", 4)) != 0) {
    Refuse("اين فايل، فايل اکسس نيست.");
  }
  if (Get32(0, 0x14) != 1) Refuse("تنها فايل اکسس 2000 تا 2003 (Jet 4) نوشته مي شود.");
  if (bytes_.size() % kPageSize != 0) Damaged();
  const std::string header = PlainHeader(bytes_.substr(kHeaderAt, 128));
  if (header.compare(kKey, 4, std::string(4, '\0')) != 0) {
    Refuse("فايل اکسس رمزگذاري شده است و نوشته نمي شود.");
  }
  if (HasPassword(header)) Refuse("فايل اکسس گذرواژه دارد و نوشته نمي شود.");
}

std::size_t JetFile::At(std::uint32_t page, std::size_t at, std::size_t size) const {
  if (page >= Pages() || at > kPageSize || size > kPageSize - at) Damaged();
  return page * kPageSize + at;
}

std::uint8_t JetFile::Get8(std::uint32_t page, std::size_t at) const {
  return static_cast<std::uint8_t>(bytes_[At(page, at, 1)]);
}

std::uint16_t JetFile::Get16(std::uint32_t page, std::size_t at) const {
  return static_cast<std::uint16_t>(Get8(page, at) | (Get8(page, at + 1) << 8U));
}

std::uint32_t JetFile::Get32(std::uint32_t page, std::size_t at) const {
  return Get16(page, at) | (static_cast<std::uint32_t>(Get16(page, at + 2)) << 16U);
}

void JetFile::Put8(std::uint32_t page, std::size_t at, std::uint8_t value) {
  bytes_[At(page, at, 1)] = static_cast<char>(value);
}

void JetFile::Put16(std::uint32_t page, std::size_t at, std::uint32_t value) {
  Put8(page, at, static_cast<std::uint8_t>(value));
  Put8(page, at + 1, static_cast<std::uint8_t>(value >> 8U));
}

void JetFile::Put32(std::uint32_t page, std::size_t at, std::uint32_t value) {
  Put16(page, at, value & 0xffffU);
  Put16(page, at + 2, value >> 16U);
}

void JetFile::PutBytes(std::uint32_t page, std::size_t at, const std::string& bytes) {
  bytes_.replace(At(page, at, bytes.size()), bytes.size(), bytes);
}

JetFile::Span JetFile::Row(RowPlace place) const {
  if (Get8(place.page, 0) != kData || place.row >= Get16(place.page, 12)) Damaged();
  const std::size_t slot = 14 + 2 * static_cast<std::size_t>(place.row);
  const std::size_t at = Get16(place.page, slot) & 0x1fffU;
  const std::size_t end = place.row == 0 ? kPageSize : Get16(place.page, slot - 2) & 0x1fffU;
  if (end > kPageSize || at > end) Damaged();
  return {place.page, at, end - at};
}

JetFile::Span JetFile::MapRow(RowPlace map) const {
  const Span row = Row(map);
  if (row.size < 5 || Get8(row.page, row.at) > 1) Damaged();
  return row;
}

void JetFile::CheckFreePages() const {
  const Span row = MapRow(kFreePages);
  if (Get8(row.page, row.at) == 0) return;
  for (std::size_t i = 0; i < (row.size - 1) / 4; ++i) {
    const std::uint32_t page = Get32(row.page, row.at + 1 + 4 * i);
    if (page != 0 && Get8(page, 0) != kMap) Damaged();
  }
}

std::uint32_t JetFile::NewPage() {
  const std::uint32_t page = Pages();
  if (page >= kMostPages) Refuse("فايل اکسس پر است.");
  bytes_.append(kPageSize, '\0');
  Mark(kFreePages, page, false);
  return page;
}

std::vector<std::uint32_t> JetFile::PagesIn(RowPlace map) const {
  const Span row = MapRow(map);
  std::vector<std::uint32_t> pages;
  const auto add = [&](std::uint32_t page, std::size_t at, std::size_t size, std::size_t first) {
    for (std::size_t bit = 0; bit < size * 8; ++bit) {
      if ((unsigned{Get8(page, at + bit / 8)} >> (bit % 8) & 1U) == 0) continue;
      if (first + bit >= Pages()) Damaged();
      pages.push_back(static_cast<std::uint32_t>(first + bit));
    }
  };
  if (Get8(row.page, row.at) == 0) {
    add(row.page, row.at + 5, row.size - 5, Get32(row.page, row.at + 1));
    return pages;
  }
  for (std::size_t i = 0; i < (row.size - 1) / 4; ++i) {
    const std::uint32_t page = Get32(row.page, row.at + 1 + 4 * i);
    if (page == 0) continue;
    if (Get8(page, 0) != kMap) Damaged();
    add(page, 4, kPageSize - 4, i * kBitsAMapPage);
  }
  return pages;
}

void JetFile::SetBit(std::uint32_t page, std::size_t at, std::size_t bit, bool on) {
  const std::uint8_t mask = static_cast<std::uint8_t>(1U << (bit % 8));
  const std::uint8_t old = Get8(page, at + bit / 8);
  Put8(page, at + bit / 8, static_cast<std::uint8_t>(on ? old | mask : old & ~mask));
}

void JetFile::Mark(RowPlace map, std::uint32_t page, bool in) {
  const Span row = MapRow(map);
  if (Get8(row.page, row.at) == 0) {
    const std::uint32_t first = Get32(row.page, row.at + 1);
    if (page >= first && page - first < (row.size - 5) * 8) {
      SetBit(row.page, row.at + 5, page - first, in);
      return;
    }
    if (!in && !(map.page == kFreePages.page && map.row == kFreePages.row)) return;
    ByReference(map);
  }
  SetBit(MapPage(map, page / kBitsAMapPage), 4, page % kBitsAMapPage, in);
}

// Pages beyond an inline map of free pages count as free, beyond any other as not in it.
void JetFile::ByReference(RowPlace map) {
  const Span row = Row(map);
  const std::vector<std::uint32_t> held = [&] {
    std::vector<std::uint32_t> pages;
    const std::size_t first = Get32(row.page, row.at + 1);
    for (std::size_t bit = 0; bit < (row.size - 5) * 8; ++bit) {
      if ((unsigned{Get8(row.page, row.at + 5 + bit / 8)} >> (bit % 8) & 1U) != 0) {
        pages.push_back(static_cast<std::uint32_t>(first + bit));
      }
    }
    return pages;
  }();
  const std::size_t known = Get32(row.page, row.at + 1) + (row.size - 5) * 8;
  PutBytes(row.page, row.at, std::string(1, '\1') + std::string(row.size - 1, '\0'));
  if (map.page == kFreePages.page && map.row == kFreePages.row) {
    for (std::size_t page = 0; page < known; ++page) {
      SetBit(MapPage(map, page / kBitsAMapPage), 4, page % kBitsAMapPage, false);
    }
  }
  for (const std::uint32_t page : held) Mark(map, page, true);
}

std::uint32_t JetFile::MapPage(RowPlace map, std::size_t index) {
  const Span row = Row(map);
  if (index >= (row.size - 1) / 4) Refuse("فايل اکسس پر است.");
  const std::uint32_t known = Get32(row.page, row.at + 1 + 4 * index);
  if (known != 0) {
    if (Get8(known, 0) != kMap) Damaged();
    return known;
  }
  const bool of_free = map.page == kFreePages.page && map.row == kFreePages.row;
  const std::uint32_t page = Pages();
  bytes_.append(kPageSize, of_free ? '\xff' : '\0');
  Put32(page, 0, 0x0105);
  Put32(row.page, row.at + 1 + 4 * index, page);
  Mark(kFreePages, page, false);
  return page;
}

}  // namespace vorek::jet
