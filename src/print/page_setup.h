#ifndef VOREK_PRINT_PAGE_SETUP_H_
#define VOREK_PRINT_PAGE_SETUP_H_

namespace vorek::print {

// The paper that a grid is printed on. Lengths are millimetres.
struct PageSetup {
  double width = 210;  // of the paper upright
  double height = 297;
  double margin = 10;      // on all sides
  bool landscape = false;  // the paper lies on its long side
  // Columns that are too wide together are made narrower, letters with them, down to 5 points; what
  // then still has no room goes to further sheets, as everything does without it. Columns with room
  // to spare are made wider.
  bool fit_width = true;

  double PaperWidth() const { return landscape ? height : width; }
  double PaperHeight() const { return landscape ? width : height; }
  double RoomAcross() const { return PaperWidth() - 2 * margin; }
  double RoomDown() const { return PaperHeight() - 2 * margin; }
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGE_SETUP_H_
