#ifndef VOREK_PRINT_PAGE_BREAKS_H_
#define VOREK_PRINT_PAGE_BREAKS_H_

#include <algorithm>
#include <cstddef>

namespace vorek::print {

// Which rows of one height stand on which page, by arithmetic alone. The kept rows follow the rows
// and stand on the last page, all together.
class PageBreaks {
 public:
  // Rows that have room on a page.
  struct Room {
    std::size_t first = 1;
    std::size_t later = 1;
    std::size_t spare = 0;  // more of them on the last page
  };
  struct Rows {
    std::size_t first = 0;
    std::size_t end = 0;
  };

  PageBreaks() = default;
  PageBreaks(std::size_t rows, std::size_t kept, Room room) : rows_(rows), room_(room) {
    const std::size_t beyond = rows > room.first ? rows - room.first : 0;
    count_ = 1 + (beyond + room.later - 1) / room.later;
    const Rows last = On(count_ - 1);
    const std::size_t most = (count_ == 1 ? room.first : room.later) + room.spare;
    if (kept > 0 && rows > 0 && last.end - last.first + kept > most) ++count_;
  }

  std::size_t Count() const { return count_; }

  // The rows of a page from 0 on, without the kept ones.
  Rows On(std::size_t page) const { return {Begin(page), Begin(page + 1)}; }

 private:
  std::size_t Begin(std::size_t page) const {
    if (page == 0) return 0;
    return std::min(rows_, room_.first + (page - 1) * room_.later);
  }

  std::size_t rows_ = 0;
  Room room_;
  std::size_t count_ = 1;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGE_BREAKS_H_
