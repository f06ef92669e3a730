#include "adapters/xlsx/references.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "adapters/xlsx/sheet_xml.h"
#include "text/utf8.h"
#include "vorek/spreadsheet.h"

namespace vorek::xlsx {
namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// What names, numbers and references are made of.
bool IsWordCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || c == '.' || c == '$' || c == '\\' || c == '?' ||
         static_cast<unsigned char>(c) >= 0x80;
}

// "$B$5": a part that isn't there is 0.
struct Reference {
  std::int32_t column = 0;
  std::int32_t row = 0;
  bool fixed_column = false;
  bool fixed_row = false;

  bool IsCell() const { return column > 0 && row > 0; }
  bool IsRow() const { return column == 0 && row > 0; }
};

std::optional<Reference> ReadReference(std::string_view word) {
  Reference found;
  std::size_t at = 0;
  const auto dollar = [&] { return at < word.size() && word[at] == '$' ? (++at, true) : false; };
  bool fixed = dollar();
  for (std::size_t letters = 0; at < word.size() && IsLetter(word[at]); ++at, ++letters) {
    if (letters == 3) return std::nullopt;
    found.column = found.column * 26 + ((word[at] | 0x20) - 'a' + 1);
  }
  if (found.column > 0) {
    found.fixed_column = fixed;
    fixed = dollar();
  }
  found.fixed_row = fixed;
  for (std::size_t digits = 0; at < word.size() && IsDigit(word[at]); ++at, ++digits) {
    if (digits == 7) return std::nullopt;
    found.row = found.row * 10 + (word[at] - '0');
  }
  const bool whole = at == word.size() && !word.empty();
  if (!whole || found.column > WorkbookLimits::kColumns || found.row > WorkbookLimits::kRows) {
    return std::nullopt;
  }
  if (found.column == 0 && found.row == 0) return std::nullopt;
  return found;
}

std::string ReferenceText(const Reference& reference) {
  std::string text;
  if (reference.column > 0) {
    if (reference.fixed_column) text += '$';
    AppendColumnName(reference.column, text);
  }
  if (reference.row > 0) {
    if (reference.fixed_row) text += '$';
    AppendNumber(reference.row, text);
  }
  return text;
}

// The sheet whose name stands before a reference.
struct Target {
  std::optional<std::string> sheet;  // "First:Last" for all from one to another
  bool external = false;             // of another workbook

  bool IsRange() const { return sheet && sheet->find(':') != std::string::npos; }
  // One of the ends is that sheet.
  bool EndsAt(std::string_view name) const {
    const std::size_t colon = sheet->find(':');
    return text::EqualsIgnoreCase(sheet->substr(0, colon), name) ||
           text::EqualsIgnoreCase(sheet->substr(colon + 1), name);
  }
};

// What becomes of a reference, or of the two ends of one. False leaves it as it stands, gone makes
// it #REF!.
using Change =
    std::function<bool(const Target& target, Reference& first, Reference* last, bool& gone)>;

// Goes through a formula and hands each reference to the change.
class FormulaReader {
 public:
  FormulaReader(std::string_view formula, const Change& change)
      : formula_(formula), change_(change) {}

  std::string Read() {
    while (at_ < formula_.size()) {
      const char c = formula_[at_];
      if (c == '"') {
        CopyQuoted();
        target_ = {};
      } else if (c == '\'') {
        TakeQuotedSheet();
      } else if (c == '[') {
        CopyBrackets();
      } else if (IsWordCharacter(c)) {
        TakeWord();
      } else {
        out_ += c;
        ++at_;
        target_ = {};
        first_sheet_.clear();
      }
    }
    return std::move(out_);
  }

 private:
  bool NextIs(char c) const { return at_ < formula_.size() && formula_[at_] == c; }

  std::string_view Quoted() {
    const std::size_t begin = at_;
    const char quote = formula_[at_++];
    while (at_ < formula_.size()) {
      if (formula_[at_++] != quote) continue;
      if (!NextIs(quote)) break;
      ++at_;
    }
    return formula_.substr(begin, at_ - begin);
  }
  void CopyQuoted() { out_ += Quoted(); }

  void TakeQuotedSheet() {
    const std::string_view quoted = Quoted();
    out_ += quoted;
    if (!NextIs('!') || quoted.size() < 2) return;
    std::string name = text::Replace(quoted.substr(1, quoted.size() - 2), "''", "'");
    target_.external = target_.external || name.find('[') != std::string::npos;
    TakeSheet(first_sheet_ + name);
  }

  void TakeSheet(std::string name) {
    out_ += '!';
    ++at_;
    target_.sheet = std::move(name);
    first_sheet_.clear();
  }

  // A column of a table, or the number of another workbook.
  void CopyBrackets() {
    const std::size_t begin = at_;
    int depth = 0;
    while (at_ < formula_.size()) {
      const char c = formula_[at_++];
      if (c == '\'' && at_ < formula_.size()) {
        ++at_;
      } else if (c == '[') {
        ++depth;
      } else if (c == ']' && --depth == 0) {
        break;
      }
    }
    out_ += formula_.substr(begin, at_ - begin);
    target_.external = at_ < formula_.size() && IsWordCharacter(formula_[at_]);
  }

  std::string_view Word() {
    const std::size_t begin = at_;
    while (at_ < formula_.size() && IsWordCharacter(formula_[at_])) ++at_;
    return formula_.substr(begin, at_ - begin);
  }

  void TakeWord() {
    const std::string_view word = Word();
    if (NextIs('!')) {
      out_ += word;
      TakeSheet(first_sheet_ + std::string(word));
      return;
    }
    first_sheet_.clear();
    const std::optional<Reference> first =
        NextIs('(') || NextIs('[') ? std::nullopt : ReadReference(word);
    if (first && NextIs(':')) {
      if (TakeArea(word, *first)) return;
    } else if (first && first->IsCell()) {
      Put(*first, nullptr, word);
    } else {
      out_ += word;
      if (NextIs(':') && !target_.sheet) return TakeColon(word);
    }
    target_ = {};
  }

  // The name of a sheet may come, the last one of many.
  void TakeColon(std::string_view word) {
    out_ += formula_[at_++];
    first_sheet_ = std::string(word) + ":";
  }

  // True if a sheet's name came of it, which goes with what follows.
  bool TakeArea(std::string_view word, const Reference& first) {
    const std::size_t colon = at_++;
    const std::string_view second = Word();
    const std::optional<Reference> last = ReadReference(second);
    const bool alike = last && last->IsCell() == first.IsCell() && last->IsRow() == first.IsRow();
    if (!alike || NextIs('!') || NextIs('(')) {
      // Sheets from one to another, or a name: the first part stands by itself.
      const bool sheets = NextIs('!') && !target_.sheet;
      if (sheets || !first.IsCell()) {
        out_ += word;
      } else {
        Put(first, nullptr, word);
      }
      out_ += ':';
      if (sheets) {
        out_ += second;
        TakeSheet(std::string(word) + ":" + std::string(second));
        return true;
      }
      at_ = colon + 1;
      return false;
    }
    Reference end = *last;
    Put(first, &end, formula_.substr(colon - word.size(), at_ - colon + word.size()));
    return false;
  }

  void Put(Reference first, Reference* last, std::string_view as_it_stands) {
    bool gone = false;
    const bool changed = change_(target_, first, last, gone);
    if (!changed) {
      out_ += as_it_stands;
    } else if (gone) {
      out_ += "#REF!";
    } else {
      out_ += ReferenceText(first);
      if (last != nullptr) out_ += ":" + ReferenceText(*last);
    }
  }

  std::string_view formula_;
  const Change& change_;
  std::size_t at_ = 0;
  std::string out_;
  Target target_;            // of what follows
  std::string first_sheet_;  // "First:", of a range of sheets whose last name comes
};

// The ends of a range after a move; false if nothing of it is left.
bool MoveRows(std::int32_t& top, std::int32_t& bottom, const RowMove& move) {
  if (move.count >= 0) {
    const auto first = move.Place(top);
    const auto last = move.Place(bottom);
    if (!first) return false;
    top = *first;
    bottom = last ? *last : WorkbookLimits::kRows;
    return true;
  }
  if (top == move.at && bottom == move.at) return false;
  if (top > move.at) --top;
  if (bottom >= move.at) --bottom;
  return true;
}

}  // namespace

UnmovedReference::UnmovedReference(std::string_view formula)
    : Error(ErrorNumber::kInvalidCall,
            "پر نمي شود: فرمول «" + std::string(formula) +
                "» چند برگه را با هم مي خواند و با سطرهاي تازه جابجا نمي شود.") {}

std::optional<std::int32_t> RowMove::Place(std::int32_t row) const {
  if (row < at) return row;
  if (count < 0) return row == at ? std::nullopt : std::optional(row - 1);
  if (row > WorkbookLimits::kRows - count) return std::nullopt;
  return row + count;
}

std::optional<Area> ReadArea(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::optional<Reference> first = ReadReference(text.substr(0, colon));
  if (!first || !first->IsCell()) return std::nullopt;
  if (colon == std::string_view::npos) {
    return Area{first->row, first->column, first->row, first->column};
  }
  const std::optional<Reference> last = ReadReference(text.substr(colon + 1));
  if (!last || !last->IsCell()) return std::nullopt;
  return Area{std::min(first->row, last->row), std::min(first->column, last->column),
              std::max(first->row, last->row), std::max(first->column, last->column)};
}

std::string AreaText(const Area& area) {
  const std::string first = ReferenceText({area.left, area.top});
  if (area.top == area.bottom && area.left == area.right) return first;
  return first + ":" + ReferenceText({area.right, area.bottom});
}

std::optional<Area> MoveArea(const Area& area, const RowMove& move) {
  Area moved = area;
  if (!MoveRows(moved.top, moved.bottom, move)) return std::nullopt;
  return moved;
}

std::string MoveFormula(std::string_view formula, const RowMove& move, std::string_view sheet,
                        bool own) {
  const Change change = [&](const Target& target, Reference& first, Reference* last, bool& gone) {
    if (target.external || first.row == 0) return false;  // no row of ours, or whole columns
    if (target.IsRange()) {
      const std::int32_t end = last == nullptr ? first.row : std::max(first.row, last->row);
      if (target.EndsAt(sheet) && end >= move.at) throw UnmovedReference(formula);
      return false;
    }
    if (!target.sheet ? !own : !text::EqualsIgnoreCase(*target.sheet, sheet)) return false;
    std::int32_t bottom = last == nullptr ? first.row : last->row;
    if (last != nullptr && bottom < first.row) std::swap(first.row, last->row);
    bottom = last == nullptr ? first.row : last->row;
    gone = !MoveRows(first.row, bottom, move);
    if (last != nullptr) last->row = bottom;
    return true;
  };
  return FormulaReader(formula, change).Read();
}

std::string ShiftFormula(std::string_view formula, std::int32_t rows, std::int32_t columns) {
  const auto shift = [&](Reference& reference) {
    if (reference.row > 0 && !reference.fixed_row) reference.row += rows;
    if (reference.column > 0 && !reference.fixed_column) reference.column += columns;
    const bool row_fits = reference.row >= 0 && reference.row <= WorkbookLimits::kRows;
    return row_fits && reference.column >= 0 && reference.column <= WorkbookLimits::kColumns;
  };
  const Change change = [&](const Target&, Reference& first, Reference* last, bool& gone) {
    const bool had_row = first.row > 0;
    const bool had_column = first.column > 0;
    gone = !shift(first) || (last != nullptr && !shift(*last)) || (had_row && first.row == 0) ||
           (had_column && first.column == 0);
    return true;
  };
  return FormulaReader(formula, change).Read();
}

}  // namespace vorek::xlsx
