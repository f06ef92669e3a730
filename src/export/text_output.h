#ifndef VOREK_EXPORT_TEXT_OUTPUT_H_
#define VOREK_EXPORT_TEXT_OUTPUT_H_

#include <string>
#include <string_view>

#include "platform/output_file.h"

namespace vorek {

// Text on its way to a file, in UTF-8 or in UTF-16, little endian, gathered into large pieces.
class TextOutput {
 public:
  enum class Encoding { kUtf8, kUtf16 };
  TextOutput(OutputFile& out, Encoding encoding) : out_(out), encoding_(encoding) {
    buffer_.reserve(kFull + kFull / 8);
  }

  void Put(std::string_view text) {
    if (encoding_ == Encoding::kUtf8) {
      buffer_.append(text);
    } else {
      PutUtf16(text);
    }
    if (buffer_.size() >= kFull) Flush();
  }
  // Hands on what is left. REQUIRED at the end.
  void Flush();

 private:
  static constexpr std::size_t kFull = std::size_t{1} << 18U;

  void PutUtf16(std::string_view text);

  OutputFile& out_;
  Encoding encoding_;
  std::string buffer_;
};

}  // namespace vorek

#endif  // VOREK_EXPORT_TEXT_OUTPUT_H_
