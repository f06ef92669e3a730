#ifndef VOREK_TESTS_XLSX_WORKBOOK_FILES_H_
#define VOREK_TESTS_XLSX_WORKBOOK_FILES_H_

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "adapters/system/system_files.h"

namespace vorek {

// A path for a file of a test, empty at first.
inline std::string ScratchFile(const std::string& name) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "vorek-xlsx-test";
  std::filesystem::create_directories(folder);
  const std::string path = (folder / (std::to_string(::getpid()) + "-" + name)).string();
  std::filesystem::remove(path);
  return path;
}

// What a program prints; "failed" in front if it ends with another code than 0.
inline std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen((command + " 2>&1").c_str(), "r"),
                                                   [](FILE*) { return 0; });
  std::string all;
  std::array<char, 4096> buffer{};
  for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0;) {
    all.append(buffer.data(), got);
  }
  return (::pclose(pipe.get()) == 0 ? "" : "failed: ") + all;
}

// The workbook as openpyxl reads it.
inline std::string ReadByOpenpyxl(const std::string& path) {
  return OutputOf("/usr/bin/python3 tests/xlsx/read_workbook.py '" + path + "'");
}

// The first sheet as gnumeric reads it, a line a row.
inline std::string ReadBySsconvert(const std::string& path) {
  return OutputOf("ssconvert -T Gnumeric_stf:stf_csv '" + path + "' fd://1 2>/dev/null");
}

}  // namespace vorek

#endif  // VOREK_TESTS_XLSX_WORKBOOK_FILES_H_
