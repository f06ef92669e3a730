#include "eval/formula_template.h"

#include <algorithm>

#include "text/number.h"

namespace vorek {

void FormulaTemplate::AddText(std::string_view text) {
  if (text.empty()) return;
  if (parts_.empty() || parts_.back().text.empty()) parts_.emplace_back();
  parts_.back().text += text;
}

void FormulaTemplate::AddPlace(std::size_t slot) {
  parts_.push_back({{}, slot});
  slots_ = std::max(slots_, slot + 1);
}

std::string FormulaTemplate::Fill(std::span<const double> values) const {
  std::string out;
  for (const Part& part : parts_) {
    if (part.text.empty()) {
      text::AppendPlainNumber(values[part.slot], out);
    } else {
      out += part.text;
    }
  }
  return out;
}

}  // namespace vorek
