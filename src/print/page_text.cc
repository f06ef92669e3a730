#include "print/page_text.h"

#include <algorithm>

namespace vorek::print {

std::vector<std::string> TextsOfPage(const Pages& pages, std::size_t n) {
  std::vector<DrawnItem> drawn = pages.Page(n);
  std::erase_if(drawn, [](const DrawnItem& item) { return item.text.empty(); });
  std::stable_sort(drawn.begin(), drawn.end(), [](const DrawnItem& a, const DrawnItem& b) {
    return a.top != b.top ? a.top < b.top : a.left + a.item->width > b.left + b.item->width;
  });
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    const bool same_line = i > 0 && drawn[i].top == drawn[i - 1].top;
    if (same_line) {
      lines.back() += '\t' + drawn[i].text;
    } else {
      lines.push_back(drawn[i].text);
    }
  }
  return lines;
}

}  // namespace vorek::print
