#include "eval/prepared_formula.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formula_generator.h"

namespace vorek {
namespace {

// Both forms side by side, each with an evaluator of its own.
class Twins {
 public:
  // Evaluates both ways; returns true if the prepared form needed no text.
  bool Agree(const FormulaTemplate& formula, const std::vector<double>& values) {
    const std::string text = formula.Fill(values);
    reference_.Expresion(text);
    const DynamicValue expected = reference_.AnalizaExpr();
    PreparedFormula prepared(evaluation_, formula);
    double value = 0;
    const bool without_text = prepared.EvaluateWithoutText(values, value);
    const WorkingValue got = prepared.Evaluate(values);
    EXPECT_EQ(got.has_value(), expected.IsNumber()) << text;
    EXPECT_EQ(NumberText(got), expected.Text()) << text;
    EXPECT_EQ(got.value_or(0), expected.Number()) << text;
    EXPECT_EQ(evaluation_.CErr(), reference_.CErr()) << text;
    evaluation_.LimpiaVar();
    reference_.LimpiaVar();
    return without_text;
  }

 private:
  EvaluationClass reference_;
  EvaluationClass evaluation_;
};

// Letters a to c are the places of the numbers.
FormulaTemplate Parse(const std::string& text) {
  FormulaTemplate formula;
  for (const char c : text) {
    if (c >= 'a' && c <= 'c') {
      formula.AddPlace(static_cast<std::size_t>(c - 'a'));
    } else {
      formula.AddText(std::string(1, c));
    }
  }
  return formula;
}

TEST(PreparedFormula, AgreesOnGeneratedFormulas) {
  FormulaGenerator generator(7);
  Twins twins;
  int without_text = 0;
  constexpr int kFormulas = 12000;
  for (int i = 0; i < kFormulas && !testing::Test::HasFailure(); ++i) {
    const FormulaTemplate formula = generator.Template();
    for (int row = 0; row < 3; ++row) {
      if (twins.Agree(formula, generator.Values())) ++without_text;
    }
  }
  EXPECT_GT(without_text, kFormulas);
}

TEST(PreparedFormula, AgreesOnTheCorpus) {
  const char* const formulas[] = {"(a+b*2)/c",
                                  "a-b*c",
                                  "a-b^2",
                                  "a+b-c",
                                  "-a-b+c",
                                  "a-(b-c)*-2",
                                  "a-(b-c)*(a-b)",
                                  "a--b",
                                  "a+(b-c)*c*c",
                                  "a-(b-c)*c*(b-c)",
                                  "-(a-b)*2",
                                  "2*-a",
                                  "a*-b",
                                  "3---a",
                                  "a---b",
                                  "+a-b",
                                  "+(a-b)*(b-c)",
                                  "a/b",
                                  "(a/b)+(1+1)",
                                  "a/0-1",
                                  "1/3*a",
                                  "a^b",
                                  "a^-2",
                                  "a-b^0.5",
                                  "-a^2",
                                  "@ABS(a-b)*c",
                                  "@SQR(a)",
                                  "@LOG(a)-1",
                                  "@PI()*a^2",
                                  "ab",
                                  "a(b)",
                                  "2a",
                                  "a2",
                                  "a.5",
                                  "a b",
                                  "a-b-c+a-b+c-a",
                                  "0-a-b-0+c-a+b",
                                  "a-0*b+c",
                                  "(a)",
                                  "((a))",
                                  "a+",
                                  "*a",
                                  "a)",
                                  "(a",
                                  "",
                                  "a-b/c+b/c-a",
                                  "@FOO(a)",
                                  "A+a",
                                  "1E5+a",
                                  "a*b*c-a*b*c+a",
                                  "a+b*c-c*b",
                                  "-a+b",
                                  "-a*b/c",
                                  "-a^2+b",
                                  "(-a-b)*(-c+a)",
                                  "@ABS(-a)-b",
                                  "-(-a)+b",
                                  "+-a-b",
                                  "---a+b",
                                  "-a\t-\n\rb",
                                  "a-b \x01",
                                  "2 -a^b",
                                  "-1-(0-900000000000000)+(0-a)",
                                  "-1-900000000000000-a+b"};
  const double values[] = {0, 1, -2.5, 1234567.89, -98765.4321, 1e14, 1e-9, 1e20};
  Twins twins;
  for (const char* formula : formulas) {
    const FormulaTemplate parsed = Parse(formula);
    for (const double a : values) {
      for (const double b : values) {
        for (const double c : values) twins.Agree(parsed, {a, b, c});
      }
    }
  }
}

TEST(PreparedFormula, NeedsNoTextForOrdinaryFormulas) {
  const struct {
    const char* formula;
    std::vector<double> values;
    bool without_text;
  } cases[] = {
      {"(a+b*2)/c", {1, 2, 3}, true},
      {"(a+b*2)/c", {-1.5, -2.25, -3}, true},
      {"a + -2*(b+@ABS(-4))/c", {1, -2, 3}, true},
      {"a-b-c", {1, -2, -3}, true},
      {"a/b", {1, 0, 0}, true},
      {"(a/b)+1", {1, 0, 0}, false},
      {"2*-a", {1, 0, 0}, true},
      {"2*-a", {-1, 0, 0}, false},
      {"a*b", {1e8, 1e8, 0}, false},
      {"-a+b", {-1, 2, 0}, true},
      {"2*(-a^2*b-c)", {-3, -2, -5}, true},
      {"b-(-a)", {-3, 2, 0}, true},
      {"---a+b", {-3, 2, 0}, false},
      {"a\t+\n b", {1, 2, 3}, true},
      {"a b", {1, 2, 3}, false},
      {"a+\x01", {1, 2, 3}, false},
      {"-1-(0-900000000000000)+(0-a)", {1, 2, 3}, true},
      {"-1-(0-900000000000000)+(0-a)", {9e14, 2, 3}, false},
  };
  for (const auto& c : cases) {
    EvaluationClass evaluation;
    PreparedFormula prepared(evaluation, Parse(c.formula));
    double value = 0;
    EXPECT_EQ(prepared.EvaluateWithoutText(c.values, value), c.without_text) << c.formula;
  }
}

TEST(PreparedFormula, LongAndDeepOnesGoByTheirText) {
  const auto nested = [](std::size_t depth) {
    return Parse(std::string(depth, '(') + "a+1" + std::string(depth, ')'));
  };
  Twins twins;
  FormulaTemplate none = Parse("a");
  none.AddText("");
  EXPECT_TRUE(twins.Agree(none, {1}));
  EXPECT_TRUE(twins.Agree(nested(31), {1}));
  EXPECT_FALSE(twins.Agree(nested(32), {1}));
  EXPECT_TRUE(twins.Agree(Parse("a" + std::string(999, ' ')), {1}));
  EXPECT_FALSE(twins.Agree(Parse("a" + std::string(1000, ' ')), {1}));
}

TEST(PreparedFormula, AVariableWithoutAValueRefusesIt) {
  EvaluationClass evaluation;
  PreparedFormula prepared(evaluation, Parse("a+b"));
  const std::vector<double> values = {1, 2};
  EXPECT_EQ(prepared.Evaluate(values), 3);
  evaluation.NuevaVar("v");
  EXPECT_EQ(prepared.Evaluate(values), 0);
  EXPECT_EQ(evaluation.CErr(), 4);
  evaluation.NuevoValor("v", 1);
  EXPECT_EQ(prepared.Evaluate(values), 3);
}

}  // namespace
}  // namespace vorek
