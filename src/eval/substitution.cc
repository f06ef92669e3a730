#include "eval/substitution.h"

#include <algorithm>
#include <cstddef>

#include "eval/limits.h"
#include "eval/name_scan.h"
#include "eval/number_text.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// One variable's occurrences in a text, replaced in place.
//
// The search begins anew at the front after each replacement. For a name of letters, digits and "_"
// that finds nothing new in front of the value, so it goes on behind it. It also goes on behind a
// value that holds the name (a variable named 5 with the value 5), which it would find for ever.
class Replacement {
 public:
  Replacement(std::string_view name, std::string_view value, std::string& text)
      : name_(name), value_(value), text_(text) {
    const bool ordinary = std::all_of(name.begin(), name.end(), IsNameCharacter);
    go_on_behind_ = ordinary || value.find(name) != std::string_view::npos;
  }

  void Run() {
    const std::size_t most = text_.size();
    std::size_t count = 0;
    std::size_t at = text_.find(name_);
    while (at != std::string::npos && text_.size() <= kMostBytes) {
      std::size_t next = at + 1;
      if (Counts(at)) {
        text_.replace(at, name_.size(), value_);
        next = go_on_behind_ ? at + value_.size() : 0;
        if (++count > most) return;
      }
      at = text_.find(name_, next);
    }
  }

 private:
  bool Counts(std::size_t at) const {
    const std::size_t end = at + name_.size();
    const bool before = at > 0 && IsNameCharacter(text_[at - 1]);
    const bool behind = end < text_.size() && IsNameCharacter(text_[end]);
    return !before && !behind;
  }

  std::string_view name_;
  std::string_view value_;
  std::string& text_;
  bool go_on_behind_;
};

}  // namespace

std::string SustituyeVar(std::string_view formula, const KeyedList<VariableClass>& variables) {
  std::string text = text::ToUpper(formula);
  for (std::size_t i = 1; i <= variables.Size(); ++i) {
    const std::string& name = variables.Key(i);
    if (name.empty()) continue;
    Replacement(name, NumberText(variables.At(i).Valor().Number()), text).Run();
  }
  return text;
}

}  // namespace vorek
