// Runs a target over files, those of folders too, without a fuzzer: a target that fails ends the
// program. With no file it fails, so that an empty corpus isn't taken for a good one.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& place) {
  if (!std::filesystem::is_directory(place)) return {place};
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(place)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** arguments) {
  std::size_t files = 0;
  for (int i = 1; i < count; ++i) {
    for (const std::filesystem::path& file : FilesIn(std::filesystem::absolute(arguments[i]))) {
      std::ifstream in(file, std::ios::binary);
      const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
      std::fprintf(stderr, "%s\n", file.filename().c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++files;
    }
  }
  return files == 0 ? 2 : 0;
}
