#ifndef VOREK_ADAPTERS_XLSX_ZIP_WRITER_H_
#define VOREK_ADAPTERS_XLSX_ZIP_WRITER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/output_file.h"

namespace vorek::xlsx {

// An archive that is written entry by entry as a stream: each entry is deflated as its bytes come,
// and its header is set right at its end. Entries and archives beyond 4 GB are zip64.
class ZipWriter {
 public:
  explicit ZipWriter(OutputFile& out);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  void BeginEntry(const std::string& name);
  void Write(std::string_view bytes);
  void EndEntry();
  // A whole entry.
  void AddEntry(const std::string& name, std::string_view bytes);
  // An entry that is packed already, as another archive holds it.
  void AddPacked(const std::string& name, std::uint16_t method, std::uint32_t crc,
                 std::uint64_t size, std::string_view packed);
  // The directory. REQUIRES: no entry is open.
  void Finish();

 private:
  static constexpr std::uint16_t kDeflated = 8;
  struct Entry {
    std::string name;
    std::uint32_t crc = 0;
    std::uint64_t packed = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
    std::uint16_t method = kDeflated;
  };
  struct Deflater;

  void PutHeader(const std::string& name, std::uint16_t method);
  void SetSums();
  void Put(std::string_view bytes);
  void Deflate(std::string_view bytes, bool last);
  void FinishEnd(std::uint64_t directory, std::uint64_t directory_size);

  OutputFile& out_;
  std::uint64_t at_ = 0;  // bytes written by now
  std::vector<Entry> entries_;
  std::unique_ptr<Deflater> deflater_;
};

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_ZIP_WRITER_H_
