#ifndef VOREK_TEXT_REPLACEMENT_H_
#define VOREK_TEXT_REPLACEMENT_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vorek::text {

// One step of the work on a query's text: every occurrence of a text, ignoring case, gives way.
struct Replacement {
  std::string find;
  std::string put;
};

// All of them, one after the other.
std::string ReplaceAll(std::string s, const std::vector<Replacement>& replacements);

// A text that knows where each of its bytes came from, through all that replaces parts of it.
class TracedText {
 public:
  explicit TracedText(std::string text);

  void ReplaceAll(const std::vector<Replacement>& replacements);
  const std::string& Text() const { return text_; }
  // The byte offset in the first text of what stands at the offset now: of a text that was put in,
  // where the one that it replaced began.
  std::size_t Origin(std::size_t offset) const;

 private:
  void Replace(const Replacement& replacement);

  std::string text_;
  std::vector<std::size_t> origins_;  // of each byte, and of the end
};

}  // namespace vorek::text

#endif  // VOREK_TEXT_REPLACEMENT_H_
