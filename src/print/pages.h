#ifndef VOREK_PRINT_PAGES_H_
#define VOREK_PRINT_PAGES_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "print/print_template.h"

namespace vorek::print {

// A thing that is drawn on a page: an item with its text, at its place in millimetres from the left
// upper corner of the paper.
struct DrawnItem {
  const Item* item = nullptr;
  double left = 0;
  double top = 0;
  std::string text;
  std::shared_ptr<const Item> own = nullptr;  // of an item that was made for this page alone
};

// What all pages have in common.
struct Paper {
  double width = 210;  // millimetres
  double height = 297;
  std::string font;  // a family; "" for the screen's own
  std::string title;
};

// Pages that can be drawn, each when it is asked for.
class Pages {
 public:
  virtual ~Pages() = default;

  virtual const Paper& Sheet() const = 0;
  // At least one.
  virtual std::size_t PageCount() const = 0;
  // What stands on page n, from 0, in the order in which it is drawn.
  virtual std::vector<DrawnItem> Page(std::size_t n) const = 0;

  static constexpr std::size_t kMostPages = 200'000;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGES_H_
