#include "adapters/xlsx/zip_writer.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <array>
#include <utility>

#include "vorek/error.h"

namespace vorek::xlsx {
namespace {

constexpr std::uint64_t kNarrow = 0xFFFFFFFF;  // that 32 bits hold; the mark of zip64 itself
constexpr std::uint16_t kVersion = 45;         // the one that knows zip64
constexpr std::uint16_t kUtf8Names = 0x800;
constexpr std::uint16_t kZip64Field = 0x0001;
// Room for the zip64 field of a local header, which is known only at the entry's end.
constexpr std::uint16_t kReservedField = 0x5256;
constexpr std::uint16_t kReserved = 16;
// 1 January 2020: archives of the same cells are the same.
constexpr std::uint32_t kTime = 0x50210000;

template <typename Number>
void Add(std::string& out, Number value) {
  for (unsigned byte = 0; byte < sizeof(Number); ++byte) {
    out += static_cast<char>((static_cast<std::uint64_t>(value) >> (8U * byte)) & 0xFFU);
  }
}

std::uint32_t Narrow(std::uint64_t value) {
  return static_cast<std::uint32_t>(value < kNarrow ? value : kNarrow);
}

}  // namespace

struct ZipWriter::Deflater {
  Deflater() : level(ISAL_DEF_LVL1_DEFAULT), packed(1U << 17U) {}

  void Begin() {
    isal_deflate_init(&stream);
    stream.level = 1;
    stream.level_buf = level.data();
    stream.level_buf_size = static_cast<std::uint32_t>(level.size());
  }

  isal_zstream stream{};
  std::vector<std::uint8_t> level;
  std::vector<std::uint8_t> packed;
};

ZipWriter::ZipWriter(OutputFile& out) : out_(out), deflater_(std::make_unique<Deflater>()) {}
ZipWriter::~ZipWriter() = default;

void ZipWriter::Put(std::string_view bytes) {
  out_.Write(bytes);
  at_ += bytes.size();
}

void ZipWriter::PutHeader(const std::string& name, std::uint16_t method) {
  std::string header("PK\x03\x04");
  Add(header, kVersion);
  Add(header, kUtf8Names);
  Add(header, method);
  Add(header, kTime);
  header.append(12, '\0');  // checksum and sizes, set at the end
  Add(header, static_cast<std::uint16_t>(name.size()));
  Add(header, static_cast<std::uint16_t>(kReserved + 4));
  header += name;
  Add(header, kReservedField);
  Add(header, kReserved);
  header.append(kReserved, '\0');
  entries_.push_back({name, 0, 0, 0, at_, method});
  Put(header);
}

void ZipWriter::BeginEntry(const std::string& name) {
  PutHeader(name, kDeflated);
  deflater_->Begin();
}

void ZipWriter::AddPacked(const std::string& name, std::uint16_t method, std::uint32_t crc,
                          std::uint64_t size, std::string_view packed) {
  PutHeader(name, method);
  Entry& entry = entries_.back();
  entry.crc = crc;
  entry.size = size;
  entry.packed = packed.size();
  Put(packed);
  SetSums();
}

void ZipWriter::Write(std::string_view bytes) {
  Entry& entry = entries_.back();
  // The checksum's function takes bytes of any address and doesn't write them.
  const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
  entry.crc = crc32_gzip_refl(entry.crc, data, bytes.size());
  entry.size += bytes.size();
  constexpr std::size_t kPiece = std::size_t{1} << 30U;  // the stream counts in 32 bits
  while (bytes.size() > kPiece) {
    Deflate(bytes.substr(0, kPiece), false);
    bytes.remove_prefix(kPiece);
  }
  Deflate(bytes, false);
}

void ZipWriter::Deflate(std::string_view bytes, bool last) {
  isal_zstream& stream = deflater_->stream;
  std::vector<std::uint8_t>& packed = deflater_->packed;
  std::string held(bytes.empty() ? 1 : 0, '\0');
  const char* const data = bytes.empty() ? held.data() : bytes.data();
  stream.next_in = reinterpret_cast<std::uint8_t*>(const_cast<char*>(data));
  stream.avail_in = static_cast<std::uint32_t>(bytes.size());
  stream.end_of_stream = last ? 1 : 0;
  stream.flush = NO_FLUSH;
  do {
    stream.next_out = packed.data();
    stream.avail_out = static_cast<std::uint32_t>(packed.size());
    if (isal_deflate(&stream) != COMP_OK) {
      throw Error(ErrorNumber::kInternal, "The workbook can't be packed.");
    }
    const std::size_t made = packed.size() - stream.avail_out;
    entries_.back().packed += made;
    Put({reinterpret_cast<const char*>(packed.data()), made});
  } while (stream.avail_out == 0);
}

void ZipWriter::EndEntry() {
  Deflate({}, true);
  SetSums();
}

void ZipWriter::SetSums() {
  const Entry& entry = entries_.back();
  const bool wide = entry.packed >= kNarrow || entry.size >= kNarrow;
  std::string sums;
  Add(sums, entry.crc);
  Add(sums, wide ? static_cast<std::uint32_t>(kNarrow) : Narrow(entry.packed));
  Add(sums, wide ? static_cast<std::uint32_t>(kNarrow) : Narrow(entry.size));
  out_.Overwrite(entry.offset + 14, sums);
  if (!wide) return;
  std::string field;
  Add(field, kZip64Field);
  Add(field, kReserved);
  Add(field, entry.size);
  Add(field, entry.packed);
  out_.Overwrite(entry.offset + 30 + entry.name.size(), field);
}

void ZipWriter::AddEntry(const std::string& name, std::string_view bytes) {
  BeginEntry(name);
  Write(bytes);
  EndEntry();
}

void ZipWriter::Finish() {
  const std::uint64_t directory = at_;
  for (const Entry& entry : entries_) {
    std::string wide;
    if (entry.size >= kNarrow) Add(wide, entry.size);
    if (entry.packed >= kNarrow) Add(wide, entry.packed);
    if (entry.offset >= kNarrow) Add(wide, entry.offset);
    std::string line("PK\x01\x02");
    Add(line, kVersion);
    Add(line, kVersion);
    Add(line, kUtf8Names);
    Add(line, entry.method);
    Add(line, kTime);
    Add(line, entry.crc);
    Add(line, Narrow(entry.packed));
    Add(line, Narrow(entry.size));
    Add(line, static_cast<std::uint16_t>(entry.name.size()));
    Add(line, static_cast<std::uint16_t>(wide.empty() ? 0 : wide.size() + 4));
    line.append(10, '\0');  // comment, disk, attributes
    Add(line, Narrow(entry.offset));
    line += entry.name;
    if (!wide.empty()) {
      Add(line, kZip64Field);
      Add(line, static_cast<std::uint16_t>(wide.size()));
      line += wide;
    }
    Put(line);
  }
  FinishEnd(directory, at_ - directory);
}

void ZipWriter::FinishEnd(std::uint64_t directory, std::uint64_t directory_size) {
  const std::uint64_t count = entries_.size();
  std::string end;
  if (directory >= kNarrow) {
    const std::uint64_t here = at_;
    end += "PK\x06\x06";
    Add(end, std::uint64_t{44});
    Add(end, kVersion);
    Add(end, kVersion);
    Add(end, std::uint64_t{0});  // this disk, and that of the directory
    Add(end, count);
    Add(end, count);
    Add(end, directory_size);
    Add(end, directory);
    end += "PK\x06\x07";
    Add(end, std::uint32_t{0});
    Add(end, here);
    Add(end, std::uint32_t{1});
  }
  end += "PK\x05\x06";
  Add(end, std::uint32_t{0});
  Add(end, static_cast<std::uint16_t>(count));
  Add(end, static_cast<std::uint16_t>(count));
  Add(end, Narrow(directory_size));
  Add(end, Narrow(directory));
  Add(end, std::uint16_t{0});
  Put(end);
}

}  // namespace vorek::xlsx
