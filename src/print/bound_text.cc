#include "print/bound_text.h"

#include <algorithm>
#include <utility>

#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::print {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kBadTemplate, reason);
}

// The names that a job is always given.
bool IsJobsOwn(const std::string& name) {
  return name == "UserID" || name == "fmlUserID" || name.starts_with('$');
}

}  // namespace

std::size_t ColumnNamed(const ResultSet& rows, const std::string& name) {
  const auto found = std::find_if(
      rows.columns.begin(), rows.columns.end(),
      [&](const ResultColumn& column) { return text::EqualsIgnoreCase(column.Name(), name); });
  if (found == rows.columns.end()) Refuse("الگوي چاپ: ستون " + name + " در داده ها نيست.");
  return static_cast<std::size_t>(found - rows.columns.begin());
}

std::pair<std::string, std::string> ParseFormula(const std::string& text) {
  const std::size_t equal = std::min(text.find('='), text.size());
  std::string name = text.substr(0, equal);
  std::string value = text.substr(std::min(equal + 1, text.size()));
  const bool quoted = value.size() >= 2 && value.front() == '\'' && value.back() == '\'';
  if (quoted) value = value.substr(1, value.size() - 2);
  if (!IsJobsOwn(name)) name.insert(0, "@");
  return {name, value};
}

BoundText::BoundText(const std::string& text, const FieldValues& values) {
  std::string literal;
  const auto end_literal = [&] {
    if (!literal.empty()) pieces_.push_back({Piece::kLiteral, std::exchange(literal, ""), 0});
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text.compare(at, 2, "{{") == 0 || text.compare(at, 2, "}}") == 0) {
      literal += text[at++];
    } else if (text[at] == '{') {
      const std::size_t close = text.find('}', at);
      if (close == std::string::npos) Refuse("الگوي چاپ: آكولاد بسته نشده است: " + text);
      end_literal();
      pieces_.push_back(FieldPiece(text.substr(at + 1, close - at - 1), values));
      at = close;
    } else {
      literal += text[at];
    }
  }
  end_literal();
}

BoundText::Piece BoundText::FieldPiece(const std::string& name, const FieldValues& values) const {
  if (name == "page") return {Piece::kPage, "", 0};
  if (name == "pages") return {Piece::kPages, "", 0};
  const auto named = values.named.find(name);
  if (named != values.named.end()) return {Piece::kLiteral, named->second, 0};
  if (name.starts_with('@') || IsJobsOwn(name)) return {Piece::kLiteral, "", 0};
  return {Piece::kColumn, name, ColumnNamed(*values.rows, name)};
}

std::string BoundText::ValueOf(const Piece& piece, const FieldValues& values, const Place& place) {
  switch (piece.kind) {
    case Piece::kLiteral:
      return piece.text;
    case Piece::kPage:
      return std::to_string(place.page);
    case Piece::kPages:
      return std::to_string(place.pages);
    case Piece::kColumn:
      break;
  }
  return place.has_row ? values.rows->columns[piece.column].Display(place.row) : "";
}

std::string BoundText::At(const FieldValues& values, const Place& place) const {
  std::string text;
  for (const Piece& piece : pieces_) text += ValueOf(piece, values, place);
  return text;
}

std::string BoundText::FormulaAt(const FieldValues& values, const Place& place) const {
  std::string formula;
  for (const Piece& piece : pieces_) {
    const std::string text = ValueOf(piece, values, place);
    const bool number = piece.kind != Piece::kLiteral;
    formula += number ? text::PlainNumber(CellNumber(text)) : text;
  }
  return formula;
}

}  // namespace vorek::print
