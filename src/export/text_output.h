#ifndef VOREK_EXPORT_TEXT_OUTPUT_H_
#define VOREK_EXPORT_TEXT_OUTPUT_H_

#include <future>
#include <string>
#include <string_view>

#include "vorek/output_file.h"

namespace vorek {

// Text on its way to a file, in UTF-8 or in UTF-16, little endian, gathered into large pieces that
// another thread encodes and writes. The file must outlive it; a failure of a write is thrown by
// one of the calls behind it.
class TextOutput {
 public:
  enum class Encoding { kUtf8, kUtf16 };
  TextOutput(OutputFile& out, Encoding encoding) : out_(out), encoding_(encoding) {
    for (std::string* const piece : {&buffer_, &leaving_}) piece->reserve(kFull + kFull / 8);
  }

  void Put(std::string_view text) { Buffer().append(text); }
  // The same for a caller that appends a text by itself. A malformed text must not be followed by
  // one that begins in the midst of a character.
  std::string& Buffer() {
    if (buffer_.size() >= kFull) HandOn();
    return buffer_;
  }
  // Writes what is left. REQUIRED at the end.
  void Finish();

 private:
  static constexpr std::size_t kFull = std::size_t{1} << 20U;

  void HandOn();
  void Await();
  void WriteLeaving();

  OutputFile& out_;
  Encoding encoding_;
  std::string buffer_;
  std::string leaving_;  // is being written by another thread
  std::string encoded_;
  std::future<void> writing_;  // last: its end is awaited before all else goes
};

}  // namespace vorek

#endif  // VOREK_EXPORT_TEXT_OUTPUT_H_
