// Bytes that are turned in the sample's Access file, by offset and value: what is damaged is
// refused by an Error, and a file that rows went to is one that more rows go to.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "adapters/access/jet_append.h"
#include "vorek/error.h"

namespace {

using vorek::jet::Appender;
using vorek::jet::JetFile;
using vorek::jet::Value;

// Rows of NULLs, but for numbers that an index asks for.
void AppendRows(JetFile& file, std::uint32_t page, int rows) {
  Appender appender(file, page, "Invoices");
  const auto& columns = appender.Definition().Columns();
  for (int row = 0; row < rows; ++row) appender.Append(std::vector<Value>(columns.size()));
  appender.Finish();
}

std::vector<std::uint32_t> TablesIn(const JetFile& file) {
  std::vector<std::uint32_t> pages;
  for (std::uint32_t page = 1; page < file.Pages(); ++page) {
    if (file.Get8(page, 0) == vorek::jet::kTable) pages.push_back(page);
  }
  return pages;
}

bool Appends(JetFile& file, std::uint32_t page) {
  try {
    AppendRows(file, page, 2);
    return true;
  } catch (const vorek::Error&) {
    return false;
  }
}

// The sample's file with rows enough for a page's end.
const std::string& Whole() {
  static const std::string whole = [] {
    std::ifstream in(VOREK_SAMPLES "/invoices.mdb", std::ios::binary);
    JetFile file({std::istreambuf_iterator<char>(in), {}});
    for (const std::uint32_t page : TablesIn(file)) {
      if (page > 2) AppendRows(file, page, 300);
    }
    return file.Bytes();
  }();
  return whole;
}

// Three bytes of an offset, one of a value.
std::string Turned(const std::uint8_t* data, std::size_t size) {
  std::string bytes = Whole();
  for (std::size_t i = 0; i + 4 <= size; i += 4) {
    const std::size_t at =
        data[i] | std::size_t{data[i + 1]} << 8U | std::size_t{data[i + 2]} << 16U;
    bytes[at % bytes.size()] = static_cast<char>(data[i + 3]);
  }
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    JetFile file(Turned(data, size));
    for (const std::uint32_t page : TablesIn(file)) {
      if (!Appends(file, page)) continue;
      try {
        AppendRows(file, page, 1);
      } catch (const vorek::Error& error) {
        std::fprintf(stderr, "refused after an append: %s\n", error.Description().c_str());
        std::abort();
      }
    }
  } catch (const vorek::Error&) {
    return 0;
  }
  return 0;
}
