#include "eval/built_in.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "eval/number_text.h"

namespace vorek {
namespace {

struct Name {
  std::string_view name;
  BuiltIn function;
};

constexpr std::array kNames = {
    Name{"@ABS", BuiltIn::kAbs}, Name{"@ATN", BuiltIn::kAtn}, Name{"@COS", BuiltIn::kCos},
    Name{"@EXP", BuiltIn::kExp}, Name{"@LOG", BuiltIn::kLog}, Name{"@SGN", BuiltIn::kSgn},
    Name{"@SIN", BuiltIn::kSin}, Name{"@SQR", BuiltIn::kSqr}, Name{"@TAN", BuiltIn::kTan},
    Name{"@PI", BuiltIn::kPi},
};

double Sign(double x) {
  if (x > 0) return 1;
  return x < 0 ? -1 : 0;
}

double Compute(BuiltIn function, double x) {
  switch (function) {
    case BuiltIn::kAbs:
      return std::fabs(x);
    case BuiltIn::kAtn:
      return RoundToSix(std::atan(x));
    case BuiltIn::kCos:
      return RoundToSix(std::cos(x));
    case BuiltIn::kExp:
      return RoundToSix(std::exp(x));
    case BuiltIn::kLog:
      return RoundToSix(std::log(x));
    case BuiltIn::kSgn:
      return Sign(x);
    case BuiltIn::kSin:
      return RoundToSix(std::sin(x));
    case BuiltIn::kSqr:
      return RoundToSix(std::sqrt(x));
    case BuiltIn::kTan:
      return RoundToSix(std::tan(x));
    case BuiltIn::kPi:
      return 3.141592;
  }
  return x;
}

double Operate(char sign, double left, double right) {
  switch (sign) {
    case '^':
      return std::pow(left, right);
    case '*':
      return left * right;
    case '/':
      return RoundToSix(left / right);
    case '+':
      return left + right;
    default:
      return left - right;
  }
}

bool Take(double computed, double& result) {
  if (!std::isfinite(computed)) return false;
  result = computed;
  return true;
}

}  // namespace

std::optional<BuiltIn> FindBuiltIn(std::string_view name) {
  const auto found = std::find_if(kNames.begin(), kNames.end(),
                                  [&](const Name& entry) { return entry.name == name; });
  if (found == kNames.end()) return std::nullopt;
  return found->function;
}

bool ApplyBuiltIn(BuiltIn function, double argument, double& result) {
  return Take(Compute(function, argument), result);
}

bool ApplyOperator(char sign, double left, double right, double& result) {
  return Take(Operate(sign, left, right), result);
}

}  // namespace vorek
