#include "adapters/xlsx/archive.h"

#include <zip.h>

#include <algorithm>
#include <utility>

#include "vorek/error.h"

namespace vorek::xlsx {
namespace {

constexpr zip_int64_t kMostParts = 5000;
constexpr std::uint64_t kLargestPart = std::uint64_t{256} << 20U;
constexpr std::uint64_t kLargestWhole = std::uint64_t{512} << 20U;
constexpr std::uint64_t kSmall = std::uint64_t{16} << 20U;  // that no ratio is asked of
constexpr std::uint64_t kMostGrowth = 200;                  // of a larger part, unpacked to packed

struct FileClosed {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

void Archive::Discarded::operator()(struct zip* archive) const { zip_discard(archive); }

Archive::Archive(std::string bytes, std::string name)
    : bytes_(std::move(bytes)), name_(std::move(name)) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* const source = zip_source_buffer_create(bytes_.data(), bytes_.size(), 0, &error);
  // A consistent archive is asked for first; others write headers that differ in what we don't use.
  for (const int flags : {ZIP_RDONLY | ZIP_CHECKCONS, ZIP_RDONLY}) {
    if (source != nullptr && zip_ == nullptr) {
      zip_.reset(zip_open_from_source(source, flags, &error));
    }
  }
  if (zip_ == nullptr && source != nullptr) zip_source_free(source);
  zip_error_fini(&error);
  if (zip_ == nullptr) Refuse("باز نمي شود: فايل آسيب ديده است.");
  CheckSizes();
}

void Archive::Refuse(const std::string& reason) const {
  throw Error(ErrorNumber::kInvalidCall, "الگوي «" + name_ + "» " + reason);
}

void Archive::CheckSizes() {
  const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
  if (count > kMostParts) Refuse("بيش از اندازه بزرگ است.");
  std::uint64_t whole = 0;
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t stat;
    if (zip_stat_index(zip_.get(), static_cast<zip_uint64_t>(i), 0, &stat) != 0) continue;
    whole += stat.size;
    const bool bomb =
        stat.size > kSmall && stat.size / std::max<std::uint64_t>(stat.comp_size, 1) > kMostGrowth;
    if (stat.size > kLargestPart || whole > kLargestWhole || bomb)
      Refuse("بيش از اندازه بزرگ است.");
    names_.emplace_back(stat.name);
  }
  CheckNames();
}

// Names that differ by capitals are one part; which of two was meant can't be told.
void Archive::CheckNames() const {
  std::vector<std::string> names = names_;
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  for (std::string& name : names) std::transform(name.begin(), name.end(), name.begin(), small);
  std::sort(names.begin(), names.end());
  const auto twice = std::adjacent_find(names.begin(), names.end());
  if (twice != names.end()) Refuse("آسيب ديده است: بخش " + *twice + " دو بار آمده است.");
}

std::int64_t Archive::Find(const std::string& part) const {
  return zip_name_locate(zip_.get(), part.c_str(), ZIP_FL_NOCASE);
}

bool Archive::Has(const std::string& part) const { return Find(part) >= 0; }

std::string Archive::ReadEntry(std::int64_t index, std::uint32_t flags, std::uint64_t size,
                               const std::string& part) const {
  const std::unique_ptr<zip_file_t, FileClosed> file(
      zip_fopen_index(zip_.get(), static_cast<zip_uint64_t>(index), flags));
  std::string bytes(static_cast<std::size_t>(size), '\0');
  std::uint64_t got = 0;
  while (file != nullptr && got < size) {
    const zip_int64_t more = zip_fread(file.get(), bytes.data() + got, size - got);
    if (more <= 0) break;
    got += static_cast<std::uint64_t>(more);
  }
  // What goes on behind the size that was told, or ends before it, is damaged.
  char beyond = 0;
  const bool whole = file != nullptr && got == size && zip_fread(file.get(), &beyond, 1) == 0;
  if (!whole) Refuse("خوانده نمي شود: بخش " + part + " آسيب ديده است.");
  return bytes;
}

std::string Archive::Read(const std::string& part) const {
  const std::int64_t index = Find(part);
  zip_stat_t stat;
  if (index < 0 || zip_stat_index(zip_.get(), static_cast<zip_uint64_t>(index), 0, &stat) != 0) {
    Refuse("ناقص است: بخش " + part + " را ندارد.");
  }
  return ReadEntry(index, 0, stat.size, part);
}

void Archive::CopyTo(ZipWriter& out, const std::string& part) const {
  const std::int64_t index = Find(part);
  zip_stat_t stat;
  if (index < 0 || zip_stat_index(zip_.get(), static_cast<zip_uint64_t>(index), 0, &stat) != 0)
    return;
  out.AddPacked(part, stat.comp_method, stat.crc, stat.size,
                ReadEntry(index, ZIP_FL_COMPRESSED, stat.comp_size, part));
}

std::string PartOf(const std::string& from, const std::string& target) {
  if (target.starts_with('/')) return target.substr(1);
  const std::size_t slash = from.rfind('/');
  std::string folder = slash == std::string::npos ? "" : from.substr(0, slash);
  std::string rest = target;
  while (rest.starts_with("../") || rest.starts_with("./")) {
    if (rest.starts_with("../")) {
      const std::size_t up = folder.rfind('/');
      folder = up == std::string::npos ? "" : folder.substr(0, up);
    }
    rest = rest.substr(rest.find('/') + 1);
  }
  return folder.empty() ? rest : folder + "/" + rest;
}

std::string RelationsOf(const std::string& part) {
  const std::size_t name = part.rfind('/') + 1;
  return part.substr(0, name) + "_rels/" + part.substr(name) + ".rels";
}

}  // namespace vorek::xlsx
