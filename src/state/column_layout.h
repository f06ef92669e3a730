#ifndef VOREK_STATE_COLUMN_LAYOUT_H_
#define VOREK_STATE_COLUMN_LAYOUT_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vorek {

// What is known of one grid column. The widths of the numbers are those of the stored layout.
struct ColumnLayout {
  std::int16_t alignment = 0;  // 4 centre, 7 right
  std::int16_t width = 0;      // twips
  std::int32_t transpose_type = 0;
  bool make_sum = false;
  std::string header_text;  // empty: this column and all behind it have no known layout
  bool is_money_column = false;
  bool make_average = false;
  std::int32_t merge_type = 0;
};

// The layouts of a grid by column number, 0 to 2500, and one record behind them that can only mark
// the end.
class ColumnLayoutTable {
 public:
  static constexpr std::int32_t kLast = 2500;

  ColumnLayoutTable() : records_(kLast + 2) {}

  // Throws Error(kSubscript) for a column outside 0 to 2501.
  ColumnLayout& operator[](std::int32_t column);
  const ColumnLayout& operator[](std::int32_t column) const;

 private:
  std::vector<ColumnLayout> records_;
};

}  // namespace vorek

#endif  // VOREK_STATE_COLUMN_LAYOUT_H_
