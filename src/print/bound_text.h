#ifndef VOREK_PRINT_BOUND_TEXT_H_
#define VOREK_PRINT_BOUND_TEXT_H_

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "vorek/result_set.h"

namespace vorek::print {

// What the fields of a template stand for.
struct FieldValues {
  ResultSetPtr rows;
  std::map<std::string, std::string> named;  // by "@name", "$-1", "UserID", ...
};

// Where a text is printed.
struct Place {
  std::size_t row = 0;  // of the result
  bool has_row = false;
  std::size_t page = 0;  // from 1
  std::size_t pages = 0;
};

// A text with {fields}, each found once: {Column3} and any other column of the query by its name in
// any case, {page}, {pages}, {@name} for a parameter ("" where it has no value), {$-1} to {$-5},
// {UserID}. "{{" is a brace.
class BoundText {
 public:
  // Throws Error(kBadTemplate), in Persian, for a field that isn't there and a brace that isn't
  // closed.
  BoundText(const std::string& text, const FieldValues& values);

  std::string At(const FieldValues& values, const Place& place) const;
  // The same with numbers in place of the fields, for a formula.
  std::string FormulaAt(const FieldValues& values, const Place& place) const;
  // True if it's one field and nothing else, so that its value may be given a form.
  bool IsField() const { return pieces_.size() == 1 && pieces_[0].kind != Piece::kLiteral; }

 private:
  struct Piece {
    enum Kind { kLiteral, kColumn, kPage, kPages } kind = kLiteral;
    std::string text;
    std::size_t column = 0;
  };

  Piece FieldPiece(const std::string& name, const FieldValues& values) const;
  static std::string ValueOf(const Piece& piece, const FieldValues& values, const Place& place);

  std::vector<Piece> pieces_;
};

// The column of that name, in any case. Throws Error(kBadTemplate).
std::size_t ColumnNamed(const ResultSet& rows, const std::string& name);

// "name='value'" or "name=5" as the name and the value without its quotes; a parameter's name gets
// its "@".
std::pair<std::string, std::string> ParseFormula(const std::string& text);

}  // namespace vorek::print

#endif  // VOREK_PRINT_BOUND_TEXT_H_
