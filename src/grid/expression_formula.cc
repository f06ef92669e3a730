#include "grid/expression_formula.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsReferenceLetter(char c) { return c == 'C' || c == 'P'; }

void ReplaceAll(std::string& formula, ColumnReference reference, const ReferenceReader& read) {
  const std::string name = (reference.above ? 'P' : 'C') + std::to_string(reference.column);
  if (!text::Contains(formula, name)) return;
  formula = text::Replace(formula, name, text::PlainNumber(read(reference)));
}

void RemoveAbove(std::string& formula, std::int32_t column) {
  static constexpr std::array<std::string_view, 7> kHeads = {"-P", "+P", "/P", "*P",
                                                             "(P", "P",  "P)"};
  const std::string number = std::to_string(column);
  if (!text::Contains(formula, "P")) return;
  for (const std::string_view head : kHeads) {
    formula = text::Replace(formula, std::string(head) + number, "");
  }
}

std::size_t SlotOf(std::vector<ColumnReference>& references, ColumnReference reference) {
  const auto found = std::find(references.begin(), references.end(), reference);
  if (found != references.end()) return static_cast<std::size_t>(found - references.begin());
  references.push_back(reference);
  return references.size() - 1;
}

}  // namespace

std::size_t ColumnDigits(std::string_view text, std::int32_t columns, std::int32_t& column) {
  std::size_t length = 0;
  std::int64_t number = 0;
  while (length < text.size() && IsDigit(text[length])) {
    const std::int64_t longer = number * 10 + (text[length] - '0');
    if (longer >= columns || (length == 1 && number == 0)) break;
    number = longer;
    ++length;
  }
  column = static_cast<std::int32_t>(number);
  return length;
}

std::string ReplaceReferences(std::string formula, std::int32_t columns, bool first_row,
                              const ReferenceReader& read) {
  for (std::int32_t column = columns - 1; column >= 0; --column) {
    ReplaceAll(formula, {column, false}, read);
    if (first_row) {
      RemoveAbove(formula, column);
    } else {
      ReplaceAll(formula, {column, true}, read);
    }
  }
  return formula;
}

std::string FirstRowText(std::string formula, std::int32_t columns) {
  for (std::int32_t column = columns - 1; column >= 0; --column) RemoveAbove(formula, column);
  return formula;
}

std::optional<ReferenceTemplate> FindReferences(std::string_view formula, std::int32_t columns) {
  ReferenceTemplate result;
  bool open = false;  // the text so far ends with a letter or a reference that a number may join
  for (std::size_t at = 0; at < formula.size();) {
    const char c = formula[at];
    std::int32_t column = 0;
    const std::size_t digits =
        IsReferenceLetter(c) ? ColumnDigits(formula.substr(at + 1), columns, column) : 0;
    if (digits == 0) {
      result.formula.AddText(formula.substr(at, 1));
      open = IsReferenceLetter(c);
      ++at;
      continue;
    }
    if (open) return std::nullopt;
    result.formula.AddPlace(SlotOf(result.references, {column, c == 'P'}));
    open = true;
    at += 1 + digits;
  }
  return result;
}

}  // namespace vorek
