#ifndef VOREK_EVAL_CALCULATION_H_
#define VOREK_EVAL_CALCULATION_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "eval/keyed_list.h"
#include "eval/number_text.h"
#include "vorek/evaluation.h"

namespace vorek {

// Computes one formula by rewriting its text: a call, a bracket or an operation gives way to the
// text of its result, until a number is left. What a formula means is defined by the order of these
// rewrites.
class Calculation {
 public:
  // notices may be null. code has to be 0; it takes the failures.
  Calculation(const KeyedList<FunctionClass>& functions, Notices* notices, std::int16_t& code)
      : functions_(functions), notices_(notices), code_(code) {}

  // The value of a formula in upper case in which no variable is left; none for one that is
  // refused.
  WorkingValue CalculaExpr(std::string_view formula);

 private:
  // One working text on its way to a number. An argument, a bracket and a function's body have one
  // of their own.
  struct Run {
    std::string text;
    WorkingValue value;  // what was computed last
  };
  struct Level {
    char first;
    char second;
  };

  WorkingValue Calcula(std::string text);
  bool Stages(Run& run);

  // False if a bracket that doesn't close, or a limit, ended the run.
  bool Functions(Run& run);
  bool Brackets(Run& run);
  void Call(Run& run, const std::string& name);
  void CallUserFunction(Run& run, const std::string& name);
  WorkingValue Argument(std::string_view text);

  void Operators(Run& run, Level level);
  // False if the text stayed as it was.
  bool Operate(Run& run, std::size_t at);
  // False if it can't be computed.
  bool Compute(Run& run, char sign, double left, double right);

  // Puts the text in the place of [begin, end).
  void Rewrite(Run& run, std::size_t begin, std::size_t end, std::string_view put);
  // Counts what is gone through, and stops a calculation that goes beyond the limits.
  void Charge(const std::string& text);
  void Stop(std::int16_t code);
  void Warn(const char* message) const;

  const KeyedList<FunctionClass>& functions_;
  Notices* notices_;
  std::int16_t& code_;
  std::uint64_t work_ = 0;
  int nested_ = 0;
  bool stopped_ = false;
};

}  // namespace vorek

#endif  // VOREK_EVAL_CALCULATION_H_
