#include "vorek/files.h"

#include <utility>

namespace vorek {
namespace {

class GatheredOutput : public OutputFile {
 public:
  GatheredOutput(Files& files, std::string path) : files_(files), path_(std::move(path)) {}

  void Write(std::string_view bytes) override { bytes_ += bytes; }
  void Overwrite(std::uint64_t offset, std::string_view bytes) override {
    bytes_.replace(static_cast<std::size_t>(offset), bytes.size(), bytes);
  }
  void Commit() override { files_.Write(path_, bytes_); }

 private:
  Files& files_;
  std::string path_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<OutputFile> Files::Create(const std::string& path) {
  return std::make_unique<GatheredOutput>(*this, path);
}

}  // namespace vorek
