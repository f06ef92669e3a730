#include "text/replacement.h"

#include <algorithm>
#include <numeric>

#include "text/utf8.h"

namespace vorek::text {

std::string ReplaceAll(std::string s, const std::vector<Replacement>& replacements) {
  for (const Replacement& step : replacements) s = ReplaceIgnoreCase(s, step.find, step.put);
  return s;
}

TracedText::TracedText(std::string text) : text_(std::move(text)), origins_(text_.size() + 1) {
  std::iota(origins_.begin(), origins_.end(), std::size_t{0});
}

void TracedText::ReplaceAll(const std::vector<Replacement>& replacements) {
  for (const Replacement& step : replacements) Replace(step);
}

void TracedText::Replace(const Replacement& replacement) {
  const std::size_t length = replacement.find.size();
  if (length == 0) return;
  for (std::size_t at = FindIgnoreCase(text_, replacement.find); at != std::string::npos;
       at = FindIgnoreCase(text_, replacement.find, at + replacement.put.size())) {
    text_.replace(at, length, replacement.put);
    const auto begin = origins_.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t origin = *begin;
    const auto rest = origins_.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
    origins_.insert(rest, replacement.put.size(), origin);
  }
}

std::size_t TracedText::Origin(std::size_t offset) const {
  return origins_[std::min(offset, origins_.size() - 1)];
}

}  // namespace vorek::text
