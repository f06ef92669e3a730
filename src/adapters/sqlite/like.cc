#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/functions.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// One step of a pattern.
struct Step {
  enum class Kind { kLetter, kAnyOne, kAnyMany, kSet } kind = Kind::kLetter;
  char32_t letter = 0;
  bool negated = false;
  std::vector<Range> set;
};

std::u32string Folded(std::string_view s) {
  std::u32string out;
  out.reserve(s.size());
  for (std::size_t at = 0; at < s.size();) out += text::ToLower(text::DecodeAt(s, at));
  return out;
}

class Pattern {
 public:
  Pattern(std::string_view pattern, char32_t escape) : escape_(escape) {
    const std::u32string letters = Folded(pattern);
    escape = text::ToLower(escape);
    for (std::size_t at = 0; at < letters.size(); ++at) {
      const char32_t c = letters[at];
      Step step;
      step.letter = c;
      if (escape != 0 && c == escape && at + 1 < letters.size()) {
        step.letter = letters[++at];
      } else if (c == U'%') {
        step.kind = Step::Kind::kAnyMany;
      } else if (c == U'_') {
        step.kind = Step::Kind::kAnyOne;
      } else if (c == U'[') {
        never_ = !ReadSet(letters, at, escape, step);
        if (never_) return;
      }
      steps_.push_back(std::move(step));
    }
  }

  char32_t Escape() const { return escape_; }

  // spend adds work and tells whether to give up, with false.
  template <typename Spend>
  bool Matches(std::u32string_view s, const Spend& spend) const {
    if (never_) return false;
    // Greedy with one way back: behind the last %, which alone may take more.
    std::size_t i = 0;
    std::size_t j = 0;
    std::size_t back_step = steps_.size();
    std::size_t back_at = 0;
    while (i < s.size()) {
      if (j < steps_.size() && steps_[j].kind == Step::Kind::kAnyMany) {
        back_step = j++;
        back_at = i;
      } else if (j < steps_.size() && Fits(steps_[j], s[i])) {
        ++i;
        ++j;
      } else if (back_step < steps_.size()) {
        j = back_step + 1;
        i = ++back_at;
      } else {
        return false;
      }
      if (spend(WorkOf(j))) return false;
    }
    while (j < steps_.size() && steps_[j].kind == Step::Kind::kAnyMany) ++j;
    return j == steps_.size();
  }

  // The first letter from which on the rest matches, s.size() + 1 for none. What stands before the
  // first % is looked for once: where it fits first, most is left for what stands behind.
  template <typename Spend>
  std::size_t FindIn(std::u32string_view s, const Spend& spend) const {
    const std::size_t none = s.size() + 1;
    if (never_) return none;
    std::size_t head = 0;
    while (head < steps_.size() && steps_[head].kind != Step::Kind::kAnyMany) ++head;
    if (head > s.size()) return none;
    if (head == steps_.size()) {
      const std::size_t last = s.size() - head;
      return FitsAt(s, last, head, spend) ? last : none;
    }
    for (std::size_t at = 0; at + head <= s.size(); ++at) {
      if (FitsAt(s, at, head, spend)) return Matches(s.substr(at), spend) ? at : none;
      if (spend(1)) return none;
    }
    return none;
  }

 private:
  // Reads "[a-z]" from its bracket on and leaves `at` on the closing one.
  static bool ReadSet(const std::u32string& letters, std::size_t& at, char32_t escape, Step& step) {
    step.kind = Step::Kind::kSet;
    std::size_t i = at + 1;
    if (i < letters.size() && letters[i] == U'^') {
      step.negated = true;
      ++i;
    }
    for (bool first = true; i < letters.size(); first = false, ++i) {
      if (letters[i] == U']' && !first) break;
      if (letters[i] == U']' && first && letters.find(U']', i + 1) == std::u32string::npos) break;
      if (escape != 0 && letters[i] == escape && i + 1 < letters.size()) ++i;
      Range range{letters[i], letters[i]};
      if (i + 2 < letters.size() && letters[i + 1] == U'-' && letters[i + 2] != U']') {
        range.last = letters[i + 2];
        i += 2;
      }
      step.set.push_back(range);
    }
    if (i >= letters.size()) return false;
    at = i;
    return true;
  }

  std::size_t WorkOf(std::size_t step) const {
    return step < steps_.size() ? 1 + steps_[step].set.size() : 1;
  }

  // Whether the first `count` steps, each of one letter, fit from `at` on.
  template <typename Spend>
  bool FitsAt(std::u32string_view s, std::size_t at, std::size_t count, const Spend& spend) const {
    for (std::size_t step = 0; step < count; ++step) {
      if (spend(WorkOf(step)) || !Fits(steps_[step], s[at + step])) return false;
    }
    return true;
  }

  static bool Fits(const Step& step, char32_t c) {
    if (step.kind == Step::Kind::kAnyOne) return true;
    if (step.kind == Step::Kind::kLetter) return step.letter == c;
    const bool in = std::any_of(step.set.begin(), step.set.end(), [c](const Range& range) {
      return c >= range.first && c <= range.last;
    });
    return in != step.negated;
  }

  char32_t escape_;
  std::vector<Step> steps_;
  bool never_ = false;
};

// The pattern of this call, made once for a pattern that stays the same over the rows.
const Pattern* PatternOf(sqlite3_context* context, sqlite3_value* pattern, char32_t escape,
                         std::unique_ptr<Pattern>& own) {
  const auto* kept = static_cast<const Pattern*>(sqlite3_get_auxdata(context, 1));
  if (kept != nullptr && kept->Escape() == escape) return kept;
  auto made = std::make_unique<Pattern>(TextOf(pattern), escape);
  sqlite3_set_auxdata(context, 1, made.release(),
                      [](void* p) { std::unique_ptr<Pattern>(static_cast<Pattern*>(p)).reset(); });
  kept = static_cast<const Pattern*>(sqlite3_get_auxdata(context, 1));
  if (kept != nullptr && kept->Escape() == escape) return kept;
  own = std::make_unique<Pattern>(TextOf(pattern), escape);
  return own.get();
}

// Counts a match's work for the call; once the run has to end, it stays so.
struct Spender {
  sqlite3_context* context;
  mutable bool stopped = false;

  bool operator()(std::size_t work) const {
    stopped = stopped || MustStop(context, work);
    return stopped;
  }
};

void LikeFunction(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  char32_t escape = 0;
  if (count == 3) {
    const std::string_view text = TextOf(values[2]);
    if (text::Length(text) != 1) {
      const std::string message = "The invalid escape character \"" + std::string(text) +
                                  "\" was specified in a LIKE predicate.";
      return sqlite3_result_error(context, message.c_str(), -1);
    }
    std::size_t at = 0;
    escape = text::DecodeAt(text, at);
  }
  std::unique_ptr<Pattern> own;
  const Pattern* pattern = PatternOf(context, values[1], escape, own);
  const std::u32string s = Folded(TextOf(values[0]));
  Spender spend{context};
  bool matches = pattern->Matches(s, spend);
  if (!matches && IsTwin(context) && !s.empty() && s.back() == U' ') {
    // Of texts that aren't national the blanks behind don't count.
    const std::size_t end = s.find_last_not_of(U' ') + 1;
    matches = pattern->Matches(std::u32string_view(s).substr(0, end), spend);
  }
  if (!spend.stopped) sqlite3_result_int(context, matches ? 1 : 0);
}

void PatIndex(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  std::string_view pattern = TextOf(values[0]);
  const bool open = !pattern.empty() && pattern.front() == '%';
  if (open) pattern.remove_prefix(1);
  const Pattern rest(pattern, 0);
  const std::u32string s = Folded(TextOf(values[1]));
  Spender spend{context};
  const std::size_t none = s.size() + 1;
  const std::size_t at = open ? rest.FindIn(s, spend) : rest.Matches(s, spend) ? 0 : none;
  if (spend.stopped) return;
  sqlite3_result_int64(context, at == none ? 0 : static_cast<std::int64_t>(at) + 1);
}

}  // namespace

bool Like(std::string_view text, std::string_view pattern, char32_t escape) {
  return Pattern(pattern, escape).Matches(Folded(text), [](std::size_t) { return false; });
}

void RegisterLike(const Registry& registry) {
  // The twin is no attempt: it takes blanks behind a text as none.
  Register(registry, "vk_like", 2, LikeFunction, "vk_like_char");
  Register(registry, "vk_like", 3, LikeFunction, "vk_like_char");
  Register(registry, "vk_patindex", 2, PatIndex);
}

}  // namespace vorek::sqlite
