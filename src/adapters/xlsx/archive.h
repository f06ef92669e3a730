#ifndef VOREK_ADAPTERS_XLSX_ARCHIVE_H_
#define VOREK_ADAPTERS_XLSX_ARCHIVE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/xlsx/zip_writer.h"

struct zip;

namespace vorek::xlsx {

// The parts of a workbook by their names in the archive, "xl/workbook.xml".
class Archive {
 public:
  // Throws Error(kInvalidCall), in Persian, for what is no archive and for one beyond all measure:
  // of too many parts, with parts that grow too large, or with two of one name. The name stands in
  // messages.
  Archive(std::string bytes, std::string name);

  const std::vector<std::string>& Names() const { return names_; }
  bool Has(const std::string& part) const;
  // Throws Error(kInvalidCall), in Persian, for a part that isn't there or is damaged.
  std::string Read(const std::string& part) const;
  // The part as it is packed here goes into another archive.
  void CopyTo(ZipWriter& out, const std::string& part) const;

  [[noreturn]] void Refuse(const std::string& reason) const;

 private:
  std::int64_t Find(const std::string& part) const;
  std::string ReadEntry(std::int64_t index, std::uint32_t flags, std::uint64_t size,
                        const std::string& part) const;
  void CheckSizes();
  void CheckNames() const;

  struct Discarded {
    void operator()(struct zip* archive) const;
  };

  std::string bytes_;  // read by zip_ as long as that lives
  std::string name_;
  std::unique_ptr<struct zip, Discarded> zip_;
  std::vector<std::string> names_;
};

// The name of a part that stands in another one's relations: "../media/a.png" of
// "xl/drawings/d.xml" is "xl/media/a.png".
std::string PartOf(const std::string& from, const std::string& target);
// Where the relations of a part stand.
std::string RelationsOf(const std::string& part);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_ARCHIVE_H_
