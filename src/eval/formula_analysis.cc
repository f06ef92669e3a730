#include "eval/formula_analysis.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "eval/number_text.h"
#include "eval/signs.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr char kPlace = '\x01';
// With these, no working text comes near the length that a calculation takes.
constexpr std::size_t kMostText = 1000;
constexpr std::size_t kMostNumbers = 64;
constexpr int kMostBrackets = 32;
constexpr std::size_t kMostDigits = 15;

bool IsDigitOrPoint(char c) { return (c >= '0' && c <= '9') || c == '.'; }
bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsSign(char c) { return c == '+' || c == '-'; }

// The template as one text with kPlace for each place.
struct Flat {
  std::string text;
  struct Place {
    std::size_t slot;
    bool behind_signs;  // two signs or more stand directly in front
  };
  std::vector<Place> places;
};

Flat Flatten(const FormulaTemplate& formula) {
  Flat flat;
  for (const FormulaTemplate::Part& part : formula.Parts()) {
    if (part.text.empty()) {
      flat.text += kPlace;
      flat.places.push_back({part.slot, false});
    } else {
      flat.text += text::ToUpper(part.text);
    }
  }
  return flat;
}

// Letters are the name of a function directly behind its "@", or else a variable's.
bool HasVariables(std::string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!IsLetter(text[at])) continue;
    if (at == 0 || (text[at - 1] != '@' && !IsLetter(text[at - 1]))) return true;
  }
  return false;
}

void MarkPlacesBehindSigns(Flat& flat) {
  std::size_t place = 0;
  std::size_t signs = 0;
  for (const char c : flat.text) {
    if (c == kPlace) flat.places[place++].behind_signs = signs > 1;
    if (!IsBlank(c)) signs = IsSign(c) ? signs + 1 : 0;
  }
}

// Reads the folded text by its grammar. Each reader returns false where the text doesn't follow it.
class Reader {
 public:
  Reader(std::string_view text, const std::vector<Flat::Place>& places)
      : text_(text), places_(places) {}

  bool Whole() { return Expression(program_.root) && at_ == text_.size(); }
  FormulaProgram Take() { return std::move(program_); }

 private:
  using Program = FormulaProgram;

  char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool Accept(char c) {
    if (Peek() != c) return false;
    ++at_;
    return true;
  }

  // The parts of an expression are collected first and stored together, behind those of the
  // brackets in it.
  bool Expression(std::uint32_t& index) {
    if (++depth_ > kMostBrackets) return false;
    std::vector<Program::Term> terms(1);
    Accept('+');  // says nothing
    opens_ = true;
    if (!Term(terms.back())) return false;
    while (IsSign(Peek())) {
      terms.emplace_back().minus = text_[at_++] == '-';
      if (!Term(terms.back())) return false;
    }
    --depth_;
    index = Count(program_.expressions);
    program_.expressions.push_back({Count(program_.terms), Count(terms)});
    program_.terms.insert(program_.terms.end(), terms.begin(), terms.end());
    return true;
  }

  bool Term(Program::Term& term) {
    std::vector<Program::Factor> factors(1);
    if (!Factor(factors.back())) return false;
    while (Peek() == '*' || Peek() == '/') {
      factors.emplace_back().sign = text_[at_++];
      if (!Factor(factors.back())) return false;
    }
    term.first_factor = Count(program_.factors);
    term.factors = Count(factors);
    program_.factors.insert(program_.factors.end(), factors.begin(), factors.end());
    return true;
  }

  bool Factor(Program::Factor& factor) {
    if (!Primary(factor.base)) return false;
    std::vector<Program::Primary> powers;
    while (Accept('^')) {
      if (!Primary(powers.emplace_back())) return false;
    }
    factor.first_power = Count(program_.powers);
    factor.powers = Count(powers);
    program_.powers.insert(program_.powers.end(), powers.begin(), powers.end());
    return true;
  }

  bool Primary(Program::Primary& primary) {
    if (++numbers_ > kMostNumbers) return false;
    const bool opens = std::exchange(opens_, false);
    primary.negated = Accept('-');
    if (Accept(kPlace)) {
      primary.opens = opens && primary.negated;
      return Place(primary);
    }
    if (Accept('(')) {
      primary.kind = Program::Kind::kGroup;
      return Expression(primary.index) && Accept(')');
    }
    if (Accept('@')) return Call(primary);
    return Literal(primary);
  }

  bool Place(Program::Primary& primary) {
    const Flat::Place& place = places_[place_++];
    primary.kind = Program::Kind::kPlace;
    primary.index = static_cast<std::uint32_t>(place.slot);
    primary.never_negative = place.behind_signs;
    return true;
  }

  bool Call(Program::Primary& primary) {
    std::string name = "@";
    while (IsLetter(Peek())) name += text_[at_++];
    const std::optional<BuiltIn> function = FindBuiltIn(name);
    if (!function || !Accept('(')) return false;
    primary.kind = Program::Kind::kCall;
    primary.function = *function;
    primary.index = Program::kNoArgument;
    if (Accept(')')) return true;
    return Expression(primary.index) && Accept(')');
  }

  bool Literal(Program::Primary& primary) {
    const std::size_t begin = at_;
    while (IsDigitOrPoint(Peek())) ++at_;
    const std::string_view number = text_.substr(begin, at_ - begin);
    const auto points = static_cast<std::size_t>(std::count(number.begin(), number.end(), '.'));
    const std::size_t first = number.find_first_not_of("0.");
    const std::size_t digits = number.size() - std::min(first, number.size());
    if (points > 1 || number.size() == points || digits > kMostDigits) return false;
    primary.literal = TextNumber(number);
    return true;
  }

  template <typename Table>
  static std::uint32_t Count(const Table& table) {
    return static_cast<std::uint32_t>(table.size());
  }

  std::string_view text_;
  const std::vector<Flat::Place>& places_;
  std::size_t at_ = 0;
  std::size_t place_ = 0;
  std::size_t numbers_ = 0;
  bool opens_ = false;  // nothing stands in front in the expression
  int depth_ = 0;
  Program program_;
};

}  // namespace

std::optional<FormulaProgram> AnalyzeFormula(const FormulaTemplate& formula) {
  Flat flat = Flatten(formula);
  if (flat.text.size() > kMostText || HasVariables(flat.text)) return std::nullopt;
  const auto places =
      static_cast<std::size_t>(std::count(flat.text.begin(), flat.text.end(), kPlace));
  if (places != flat.places.size()) return std::nullopt;  // the text holds the mark itself
  MarkPlacesBehindSigns(flat);
  const std::string folded = FoldSigns(flat.text);
  Reader reader(folded, flat.places);
  if (!reader.Whole()) return std::nullopt;
  return reader.Take();
}

}  // namespace vorek
