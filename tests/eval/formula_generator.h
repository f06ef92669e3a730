#ifndef VOREK_TESTS_EVAL_FORMULA_GENERATOR_H_
#define VOREK_TESTS_EVAL_FORMULA_GENERATOR_H_

#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "eval/formula_template.h"

namespace vorek {

// Makes templates with places of three numbers, most of them well-formed, and numbers for them.
class FormulaGenerator {
 public:
  static constexpr std::size_t kSlots = 3;

  explicit FormulaGenerator(unsigned seed) : random_(seed) {}

  FormulaTemplate Template() {
    out_ = FormulaTemplate();
    // Places at both ends, so that each template has its slots.
    Sum(Below(4));
    if (Below(12) == 0) Noise();
    if (Below(40) == 0) Sum(1);
    return out_;
  }

  std::vector<double> Values() {
    std::vector<double> values(kSlots);
    for (double& value : values) value = Value();
    return values;
  }

  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }

 private:
  void Sum(std::size_t depth) {
    if (Below(12) == 0) Text(Pick({"-", "+", "--", "---", "-+"}));
    Product(depth);
    for (std::size_t i = Below(5); i > 0; --i) {
      Text(Below(15) == 0 ? Pick({"--", "+-", "-+", "++", "---", "--+", " - "}) : Pick({"+", "-"}));
      Product(depth);
    }
  }

  void Product(std::size_t depth) {
    Power(depth);
    while (Below(3) == 0) {
      Text(Pick({"*", "/", "*", "/", "*-", "/-", " * ", "*", "/", "*"}));
      Power(depth);
    }
  }

  void Power(std::size_t depth) {
    Number(depth);
    while (Below(12) == 0) {
      Text(Pick({"^", "^-", "^"}));
      if (Below(2) == 0)
        Text(Pick({"2", "3", "0", "0.5"}));
      else
        Number(depth);
    }
  }

  void Number(std::size_t depth) {
    const std::size_t kind = Below(10);
    if (depth > 0 && kind < 3) {
      Text(kind == 0 ? Pick({"@ABS(", "@SQR(", "@log(", "@Sgn(", "@COS(", "@ATN(", "@EXP("}) : "(");
      Sum(depth - 1);
      Text(")");
    } else if (kind < 8) {
      out_.AddPlace(Below(kSlots));
    } else if (Below(25) == 0) {
      Noise();
    } else {
      Text(Pick({"0", "1", "2", "5", "10", "0.1", "100", "0.25", "3.5", ".5", "7.", "1000000",
                 "12345678.9", "@PI()", "0.000001", "123456789012345"}));
    }
  }

  void Noise() {
    Text(
        Pick({"(",       ")",    "()",   "-",    "+",      "*",     "/",  "^", "@",
              "@FOO(1)", "A",    "E",    "1E3",  "1E+20",  "1E-07", ",",  " ", "..",
              "1.2.3",   "۵",    "ش",    "@ABS", "@ABS()", "1 2",   "\t", "_", "123456789012345678",
              "(1",      "@PI(", "2(3)", "^-",   "+-*",    "1+)"}));
  }

  void Text(const char* text) { out_.AddText(text); }
  const char* Pick(const std::vector<const char*>& choices) {
    return choices[Below(choices.size())];
  }

  double Value() {
    const auto units = static_cast<double>(Below(200001)) - 100000;
    switch (Below(8)) {
      case 0:
        return static_cast<double>(Below(4)) - 1;
      case 1:
        return units / 100;
      case 2:
        return units / 10000 * 1234.5678;
      case 3:
        return std::fabs(units) * 1000;
      case 4:
        return Below(3) == 0 ? units * 1e11 : units * 1e7 + 0.25;
      case 5:
        return Below(3) == 0 ? units * 1e-13 : units / 300;
      default:
        return std::fabs(units);
    }
  }

  std::mt19937 random_;
  FormulaTemplate out_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_EVAL_FORMULA_GENERATOR_H_
