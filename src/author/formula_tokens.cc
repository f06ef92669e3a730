#include "author/formula_tokens.h"

#include <algorithm>

#include "text/utf8.h"

namespace vorek {
namespace {

using Kind = FormulaToken::Kind;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

class FormulaScanner {
 public:
  explicit FormulaScanner(std::string_view s) : s_(s) {}

  std::vector<FormulaToken> Scan() {
    while (at_ < s_.size()) {
      if (IsBlank(s_[at_])) {
        ++at_;
      } else {
        Next(s_[at_]);
      }
    }
    return std::move(tokens_);
  }

 private:
  void Next(char c) {
    if (IsDigit(c) || c == '.') return Number();
    if (IsLetter(c)) return Word();
    if (c == '@') return Add(Kind::kFunction, Run(at_ + 1, IsWordCharacter));
    static constexpr std::string_view kOperators = "+-*/^";
    if (kOperators.find(c) != std::string_view::npos) return Add(Kind::kOperator, at_ + 1);
    if (c == '(') return Add(Kind::kOpen, at_ + 1);
    if (c == ')') return Add(Kind::kClose, at_ + 1);
    if (c == ',') return Add(Kind::kComma, at_ + 1);
    std::size_t end = at_;
    text::DecodeAt(s_, end);
    Add(Kind::kOther, end);
  }

  static bool IsWordCharacter(char c) { return IsLetter(c) || IsDigit(c); }
  static bool IsNumberCharacter(char c) { return IsDigit(c) || c == '.'; }

  template <typename Is>
  std::size_t Run(std::size_t from, const Is& is) const {
    const auto rest = s_.substr(from);
    return from +
           static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), is) - rest.begin());
  }

  void Add(Kind kind, std::size_t end) {
    tokens_.push_back({kind, std::string(s_.substr(at_, end - at_)), at_});
    at_ = end;
  }

  void Number() {
    const std::size_t end = Run(at_, IsNumberCharacter);
    const bool exponent = end < s_.size() && (s_[end] == 'E' || s_[end] == 'e');
    if (!exponent) return Add(Kind::kNumber, end);
    const std::size_t sign = end + 1 < s_.size() && (s_[end + 1] == '+' || s_[end + 1] == '-');
    const std::size_t digits = Run(end + 1 + sign, IsDigit);
    digits > end + 1 + sign ? Add(Kind::kExponent, digits) : Add(Kind::kNumber, end);
  }

  // C1C2 is two references, and so are all of a word that is made of them.
  void Word() {
    const std::size_t end = Run(at_, IsWordCharacter);
    if (!IsReferences(s_.substr(at_, end - at_))) return Add(Kind::kName, end);
    while (at_ < end) Add(Kind::kReference, Run(at_ + 1, IsDigit));
  }

  static bool IsReferences(std::string_view word) {
    for (std::size_t at = 0; at < word.size();) {
      if (word[at] != 'C' && word[at] != 'P') return false;
      const std::size_t begin = ++at;
      while (at < word.size() && IsDigit(word[at])) ++at;
      if (at == begin) return false;
    }
    return true;
  }

  std::string_view s_;
  std::size_t at_ = 0;
  std::vector<FormulaToken> tokens_;
};

}  // namespace

std::vector<FormulaToken> ScanFormula(std::string_view formula) {
  return FormulaScanner(formula).Scan();
}

}  // namespace vorek
