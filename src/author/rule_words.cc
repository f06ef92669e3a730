#include "author/rule_words.h"

#include <algorithm>
#include <array>

namespace vorek {

const RuleWords& WordsOf(Rule rule) {
  const std::array subjects = {QueryRuleWords(),   ParameterRuleWords(), LayoutRuleWords(),
                               FormulaRuleWords(), SecurityRuleWords(),  LinkRuleWords()};
  const auto has = [&](const RuleWords& row) { return row.rule == rule; };
  const auto subject = std::find_if(subjects.begin(), subjects.end(), [&](const auto& rows) {
    return std::any_of(rows.begin(), rows.end(), has);
  });
  return *std::find_if(subject->begin(), subject->end(), has);
}

}  // namespace vorek
