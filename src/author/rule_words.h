#ifndef VOREK_AUTHOR_RULE_WORDS_H_
#define VOREK_AUTHOR_RULE_WORDS_H_

#include <array>
#include <span>
#include <string_view>

#include "author/finding_text.h"

namespace vorek {

// What a rule says in one language: what is wrong, what comes of it, what to write instead. %1, %2
// ... stand for what a finding names.
struct Words {
  std::string_view what;
  std::string_view why;
  std::string_view instead;
};

struct RuleWords {
  Rule rule;
  Severity severity;
  std::string_view code;
  std::array<Words, 2> words;  // by Language
};

// The words of each subject, in the files named after them; every rule has a row in one.
std::span<const RuleWords> QueryRuleWords();
std::span<const RuleWords> ParameterRuleWords();
std::span<const RuleWords> LayoutRuleWords();
std::span<const RuleWords> FormulaRuleWords();
std::span<const RuleWords> SecurityRuleWords();
std::span<const RuleWords> LinkRuleWords();  // print templates as well

const RuleWords& WordsOf(Rule rule);

}  // namespace vorek

#endif  // VOREK_AUTHOR_RULE_WORDS_H_
