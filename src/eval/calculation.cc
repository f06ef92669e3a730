#include "eval/calculation.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "eval/built_in.h"
#include "eval/evaluation_code.h"
#include "eval/limits.h"
#include "eval/operands.h"
#include "eval/signs.h"
#include "state/notices.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

constexpr const char* kWarningTitle = "اشکال در محاسبات ";
constexpr const char* kProductWarning =
    "از آنجايي كه اندازه اعداد از حد نرمال خود بيشتر شده است احتمال اشکال وحود دارد";
constexpr const char* kResultWarning =
    "از آنجايي كه اندازه اعداد از حد نرمال خود بيشتر شده است احتمال اشکال وجود دارد";

// The ")" that belongs to the "(" at `open`; kNone without one.
std::size_t Closing(std::string_view text, std::size_t open) {
  int depth = 1;
  for (std::size_t at = open + 1; at < text.size(); ++at) {
    if (text[at] == '(') ++depth;
    if (text[at] == ')' && --depth == 0) return at;
  }
  return kNone;
}

// Where the level's next operation stands; kNone or 0 if there is none. The operations go from left
// to right, except that behind a leading minus additions come before subtractions.
std::size_t Choose(std::string_view text, char first, char second) {
  const std::size_t a = text.find(first);
  const std::size_t b = text.find(second);
  const bool leading_minus = text.starts_with('-');
  if (a == kNone) return leading_minus && b != kNone ? text.find(second, 1) : b;
  if (b == kNone || a <= b) return a;
  return first == '+' && leading_minus ? a : b;
}

// What goes in front of a result whose left operand took over a "-" from inside the text, at
// `begin`, and which doesn't bring a "-" of its own. A subtracted power stays subtracted: 5-1^2.
std::string_view SignInFront(std::string_view text, std::size_t begin, char sign, bool computed) {
  if (sign != '^') return "+";
  return computed && NumberEndsBefore(text, begin) ? "-" : "";
}

}  // namespace

WorkingValue Calculation::CalculaExpr(std::string_view formula) {
  return Calcula(FoldSigns(formula));
}

WorkingValue Calculation::Calcula(std::string text) {
  Charge(text);
  if (nested_ >= kMostNested) Stop(evaluation_code::kTooDeep);
  if (stopped_) return std::nullopt;
  Run run{std::move(text), std::nullopt};
  ++nested_;
  const bool ended = Stages(run);
  --nested_;
  if (!ended || stopped_) return std::nullopt;
  if (text::Contains(run.text, "E+")) Warn(kResultWarning);
  return TextNumber(run.text);
}

bool Calculation::Stages(Run& run) {
  if (!Functions(run)) return false;
  if (code_ != evaluation_code::kNone) return true;
  if (!Brackets(run)) return false;
  Operators(run, {'^', '^'});
  Operators(run, {'*', '/'});
  // A leading plus says nothing, and would end the next level at once.
  run.text.erase(0, std::min(run.text.find_first_not_of('+'), run.text.size()));
  Operators(run, {'+', '-'});
  return true;
}

bool Calculation::Functions(Run& run) {
  for (std::size_t at; !stopped_ && (at = run.text.find('@')) != kNone;) {
    const std::size_t open = run.text.find('(', at);
    if (open == kNone) {
      code_ = evaluation_code::kDefinition;
      return true;
    }
    const std::size_t close = Closing(run.text, open);
    if (close == kNone) {
      code_ = evaluation_code::kBrackets;
      return false;
    }
    run.value = Argument(std::string_view(run.text).substr(open + 1, close - open - 1));
    if (!stopped_) Call(run, text::ToUpper(std::string_view(run.text).substr(at, open - at)));
    Rewrite(run, at, close + 1, NumberText(run.value));
  }
  return !stopped_;
}

WorkingValue Calculation::Argument(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), IsBlank)) return 0;
  return Calcula(std::string(text));
}

void Calculation::Call(Run& run, const std::string& name) {
  const std::optional<BuiltIn> function = FindBuiltIn(name);
  if (!function) {
    CallUserFunction(run, name);
    return;
  }
  double result = 0;
  if (ApplyBuiltIn(*function, run.value.value_or(0), result)) run.value = result;
}

void Calculation::CallUserFunction(Run& run, const std::string& name) {
  const std::size_t position = functions_.Position(name);
  if (position == 0) {
    code_ = evaluation_code::kNoFunction;
    run.value = 0;
    return;
  }
  run.value =
      Calcula(text::Replace(functions_.At(position).Definicion(), "X", NumberText(run.value)));
}

bool Calculation::Brackets(Run& run) {
  for (std::size_t open; !stopped_ && (open = run.text.find('(')) != kNone;) {
    const std::size_t close = Closing(run.text, open);
    if (close == kNone) {
      code_ = evaluation_code::kBrackets;
      return false;
    }
    run.value = Calcula(run.text.substr(open + 1, close - open - 1));
    Rewrite(run, open, close + 1, NumberText(run.value));
  }
  return !stopped_;
}

void Calculation::Operators(Run& run, Level level) {
  bool changed = true;
  // A step that leaves the text as it was would come back for ever: it ends the level.
  while (changed && !stopped_) {
    const std::size_t at = Choose(run.text, level.first, level.second);
    if (at == kNone || at == 0) return;
    changed = Operate(run, at);
  }
}

bool Calculation::Operate(Run& run, std::size_t at) {
  const std::string_view text = run.text;
  const char sign = text[at];
  const Operand left = OperandoIzquierdo(text, at);
  const Operand right = OperandoDerecho(text, at);
  const bool computed = Compute(run, sign, left.value, right.value);
  std::string put = NumberText(run.value);
  const bool inner_minus = left.begin > 0 && left.begin < at && text[left.begin] == '-';
  if (inner_minus && !put.starts_with('-')) {
    const std::string_view front = SignInFront(text, left.begin, sign, computed);
    if (front == "-") run.value = -run.value.value_or(0);
    put.insert(0, front);
  }
  const bool changed = text.substr(left.begin, right.end - left.begin) != put;
  Rewrite(run, left.begin, right.end, put);
  return changed;
}

bool Calculation::Compute(Run& run, char sign, double left, double right) {
  if (sign == '/' && right == 0) {
    code_ = evaluation_code::kDivisionByZero;
    run.value = 0;
    return true;
  }
  double result = 0;
  if (!ApplyOperator(sign, left, right, result)) return false;
  run.value = result;
  if (sign == '*' && HasExponentForm(result)) Warn(kProductWarning);
  return true;
}

void Calculation::Rewrite(Run& run, std::size_t begin, std::size_t end, std::string_view put) {
  run.text.replace(begin, end - begin, put);
  Charge(run.text);
}

void Calculation::Charge(const std::string& text) {
  work_ += kStepWork + text.size();
  if (work_ > kMostWork) Stop(evaluation_code::kTooDeep);
  if (text.size() > kMostCharacters && text::Length(text) > kMostCharacters) {
    Stop(evaluation_code::kTooLong);
  }
}

void Calculation::Stop(std::int16_t code) {
  if (!stopped_) code_ = code;
  stopped_ = true;
}

void Calculation::Warn(const char* message) const {
  if (notices_ != nullptr) notices_->ShowMessage(kWarningTitle, message);
}

}  // namespace vorek
