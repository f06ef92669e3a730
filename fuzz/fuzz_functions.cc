// A function file of any content: it's read, and what is written of it reads back as the same.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "eval/function_file.h"

namespace {

using Functions = vorek::KeyedList<vorek::FunctionClass>;

std::string Rewrite(const std::string& file) {
  Functions functions;
  vorek::ReadFunctions(file, functions);
  return vorek::WriteFunctions(functions);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A line end inside a name becomes a blank, and two names may then be one.
  const std::string written =
      Rewrite(Rewrite(std::string(reinterpret_cast<const char*>(data), size)));
  if (Rewrite(written) != written) std::abort();
  return 0;
}
