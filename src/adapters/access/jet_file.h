#ifndef VOREK_ADAPTERS_ACCESS_JET_FILE_H_
#define VOREK_ADAPTERS_ACCESS_JET_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorek::jet {

constexpr std::size_t kPageSize = 4096;

enum PageType : std::uint8_t { kData = 1, kTable = 2, kNode = 3, kLeaf = 4, kMap = 5 };

// Where a row lies: a page and the row's number on it.
struct RowPlace {
  std::uint32_t page = 0;
  std::uint8_t row = 0;
};

// A file of Jet 4 as bytes in memory. All that is read of it is checked against its bounds: a
// damaged file ends in an Error. Numbers are little endian, offsets are those of the page.
class JetFile {
 public:
  // Refuses what isn't a Jet 4 file, an encrypted one and one with a password.
  explicit JetFile(std::string bytes);

  const std::string& Bytes() const { return bytes_; }
  std::uint32_t Pages() const { return static_cast<std::uint32_t>(bytes_.size() / kPageSize); }

  std::uint8_t Get8(std::uint32_t page, std::size_t at) const;
  std::uint16_t Get16(std::uint32_t page, std::size_t at) const;
  std::uint32_t Get32(std::uint32_t page, std::size_t at) const;
  void Put8(std::uint32_t page, std::size_t at, std::uint8_t value);
  void Put16(std::uint32_t page, std::size_t at, std::uint32_t value);
  void Put32(std::uint32_t page, std::size_t at, std::uint32_t value);
  void PutBytes(std::uint32_t page, std::size_t at, const std::string& bytes);

  // Bytes of a row: where they begin and how many they are, its flags left out.
  struct Span {
    std::uint32_t page;
    std::size_t at;
    std::size_t size;
  };
  Span Row(RowPlace place) const;

  // Throws Error(kInvalidCall) where the map of free pages is damaged, as NewPage would.
  void CheckFreePages() const;
  // A page that nothing used, all zero, at the file's end, and no longer among the free ones.
  std::uint32_t NewPage();

  // The pages of a usage map, ascending.
  std::vector<std::uint32_t> PagesIn(RowPlace map) const;
  // Puts a page into a map or takes it out; a map that lists pages itself grows into one by
  // reference where that is needed.
  void Mark(RowPlace map, std::uint32_t page, bool in);

 private:
  // The row of a usage map, of a kind that there is.
  Span MapRow(RowPlace map) const;
  std::size_t At(std::uint32_t page, std::size_t at, std::size_t size) const;
  void ByReference(RowPlace map);
  std::uint32_t MapPage(RowPlace map, std::size_t index);
  void SetBit(std::uint32_t page, std::size_t at, std::size_t bit, bool on);

  std::string bytes_;
};

[[noreturn]] void Damaged();

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_FILE_H_
