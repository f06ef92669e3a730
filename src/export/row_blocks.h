#ifndef VOREK_EXPORT_ROW_BLOCKS_H_
#define VOREK_EXPORT_ROW_BLOCKS_H_

#include <cstdint>
#include <functional>
#include <string>

#include "export/long_work.h"
#include "vorek/output_file.h"

namespace vorek {

// Rows of a grid from `first` up to `end`, which isn't one of them.
struct RowRange {
  std::int32_t first = 0;
  std::int32_t end = 0;
};

// Appends what a file holds of some rows. It is called by two threads at once, for different rows:
// it may read the grid, and change nothing but its text.
using RowsMaker = std::function<void(RowRange rows, std::string& text)>;

// Writes the rows block by block in their order, while two threads make the texts of the next ones.
// This thread asks the work now and then. REQUIRES: the grid doesn't change meanwhile. Throws what
// the maker, the file or the work throws; then some of the rows are written.
void WriteInBlocks(RowRange rows, OutputFile& out, LongWork& work, const RowsMaker& make);

}  // namespace vorek

#endif  // VOREK_EXPORT_ROW_BLOCKS_H_
