#ifndef VOREK_PRINT_PAPER_COLOR_H_
#define VOREK_PRINT_PAPER_COLOR_H_

#include <cstdint>

namespace vorek::print {

// 0xRRGGBB; a fill of -1 leaves the paper white.
struct PaperColors {
  std::int32_t fill = -1;
  std::int32_t text = 0;
};

// A cell's colours (CellFormat) on paper: as they were asked for, black on white where none were. A
// text that can't be read on its ground (contrast below 4.5 to 1, Web Content Accessibility
// Guidelines 2.1) becomes black or white.
PaperColors ColorsOnPaper(std::int32_t back, std::int32_t fore);

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAPER_COLOR_H_
