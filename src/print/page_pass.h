#ifndef VOREK_PRINT_PAGE_PASS_H_
#define VOREK_PRINT_PAGE_PASS_H_

#include <cstddef>

#include "print/print_document.h"

namespace vorek::print {

// Puts the bands of a document on its pages, row by row: a page is broken where the next band, with
// the rows that are to stay with it, has no room left.
class PagePass {
 public:
  explicit PagePass(PrintDocument& document);

  void Run();

 private:
  using Placed = PrintDocument::Placed;

  double HeightOf(const Band* band) const { return band == nullptr ? 0 : band->height; }
  const Band* GroupBand(BandKind kind, std::size_t level) const;
  std::size_t FirstBegunLevel(std::size_t row) const;

  void StartPage();
  void EndPage();
  void MakeRoom(double height);
  void Put(const Band* band, std::size_t row, std::size_t level = 0);
  void PutAt(const Band& band, double top, std::size_t row, std::size_t level);
  void PutHeaders(std::size_t level, std::size_t row);
  void PutFooters(std::size_t level, std::size_t last_row);
  double RoomForHeaders(std::size_t level) const;
  double HeightOfGroup(std::size_t level) const;

  PrintDocument& document_;
  const PrintTemplate& template_;
  const Band& detail_;
  double bottom_;
  double top_ = 0;          // where the next band goes
  double content_top_ = 0;  // behind the bands that stand on each page
  std::size_t next_row_ = 0;
  std::size_t row_ = 0;  // whose groups are open: the last one printed while their footers are put
  std::size_t open_levels_ = 0;               // groups that are begun, from the outermost on
  std::vector<std::uint32_t> current_group_;  // of each level
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGE_PASS_H_
