#ifndef VOREK_ADAPTERS_XLSX_ZIP_WRITER_H_
#define VOREK_ADAPTERS_XLSX_ZIP_WRITER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/output_file.h"

namespace vorek::xlsx {

// An archive that is written entry by entry as a stream: each entry is deflated as its bytes come,
// and its header is set right at its end. Entries and archives beyond 4 GB are zip64.
class ZipWriter {
 public:
  explicit ZipWriter(OutputFile& out);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  void BeginEntry(std::string name);
  void Write(std::string_view bytes);
  void EndEntry();
  // A whole entry.
  void AddEntry(std::string name, std::string_view bytes);
  // The directory. REQUIRES: no entry is open.
  void Finish();

 private:
  struct Entry {
    std::string name;
    std::uint32_t crc = 0;
    std::uint64_t packed = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
  };
  struct Deflater;

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
