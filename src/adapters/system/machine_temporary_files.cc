#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "vorek/error.h"
#include "vorek/system.h"
#include "vorek/temporary_files.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

class MachineTemporary : public TemporaryFiles {
 public:
  std::string Folder() const override {
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    return failed ? std::string() : folder.string();
  }

  std::string NewName() override {
    std::array<unsigned char, 10> bytes{};
    std::ifstream random("/dev/urandom", std::ios::binary);
    random.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
    if (!random) throw Error(ErrorNumber::kPathAccess, "نام فايل موقت ساخته نشد.");
    std::string name = "vorek-";
    for (const unsigned char byte : bytes) name += static_cast<char>('a' + byte % 26);
    return name + ".tmp";
  }

  void Delete(const std::string& path) override {
    std::error_code failed;
    fs::remove(path, failed);
  }
};

}  // namespace

std::shared_ptr<TemporaryFiles> MachineTemporaryFiles() {
  return std::make_shared<MachineTemporary>();
}

}  // namespace vorek
