#include <gtest/gtest.h>

#include <string>

#include "recorded_notices.h"
#include "vorek/evaluation.h"

namespace vorek {
namespace {

struct Case {
  const char* formula;
  const char* value;
  int code = 0;
};

void Check(EvaluationClass& evaluation, const Case& c) {
  evaluation.Expresion(c.formula);
  EXPECT_EQ(evaluation.AnalizaExpr().Text(), c.value) << c.formula;
  EXPECT_EQ(evaluation.CErr(), c.code) << c.formula;
}

template <std::size_t kCount>
void CheckAll(const Case (&cases)[kCount]) {
  EvaluationClass evaluation;
  for (const Case& c : cases) Check(evaluation, c);
}

TEST(Calculation, PrecedenceAndOrder) {
  CheckAll({
      {"3 + -2*(1+@ABS(-4))/5", "1"},
      {"2+3*4", "14"},
      {"10-2*3+4", "8"},
      {"1-2*3-4*5", "-25"},
      {"2+3-4+5", "6"},
      {"1-2-3", "-4"},
      {"-1-2-3", "-6"},
      {"-2-3+4", "-1"},
      {"-1-2-3+4+5-6", "-3"},
      {"5-3*-2", "11"},
      {"6-4/-2", "8"},
      {"-6/2*3", "-9"},
      {"6/2*3", "9"},
      {"2^3^2", "64"},
      {"(3-5)*2", "-4"},
      {"2-(3-5)", "4"},
      {"5-(3-5)*2", "9"},
      {"((1+2)*(3+4))", "21"},
  });
}

TEST(Calculation, Signs) {
  CheckAll({
      {"2*-3", "-6"},
      {"2--3", "5"},
      {"2^-1", "0.5"},
      {"3---5", "-2"},
      {"-3^2", "9"},
      {"5-1^2", "4"},
      {"5-2^3", "-3"},
      {"5*-2^2", "20"},
      {"5-(1-3)^2", "1"},
      {"5-0^2", "5"},
      {"+5", "5"},
      {"+5-3", "2"},
      {"+(3-5)", "-2"},
      {"--5-3", "2"},
      {"5-(3-5)*-2", "9"},  // the product's "+" ends the
                            // subtraction's right operand
      {"2*+3", "3"},
      {"-(3-5)*2", "-4"},
      {"2*-(3-5)", "-2"},
      {"7-0*5", "7"},
  });
}

TEST(Calculation, Rounding) {
  CheckAll({
      {"10/3", "3.333333"},
      {"1/3*3", "0.999999"},
      {"2^0.5", "1.4142135623731"},
      {"0.1+0.2", "0.3"},
      {"1/128", "0.007812"},
      {"3/128", "0.023438"},
      {"-1/128", "-0.007812"},
      {"0.0001*0.0001", "0.00000001"},
      {"0.0001*0.0001+1", "1.00000001"},
      {"123456789.123456789+0", "123456789.123457"},
      {"123456789012345678", "1.23456789012346E+17"},
  });
}

TEST(Calculation, Functions) {
  CheckAll({
      {"@PI()", "3.141592"},
      {"@PI(5)*2", "6.283184"},
      {"@ABS()", "0"},
      {"@ABS( )", "0"},
      {"@abs(-3)", "3"},
      {"@ATN(1)*4", "3.141592"},
      {"@COS(0)+@SIN(0)", "1"},
      {"@EXP(1)", "2.718282"},
      {"@LOG(@EXP(2))", "2"},
      {"@SGN(-7)-@SGN(0)", "-1"},
      {"@SQR(2)", "1.414214"},
      {"@TAN(1)", "1.557408"},
      {"@ABS(@ABS(-2)-5)", "3"},
      {"@LOG(0)", "0"},
      {"@LOG(-2)", "-2"},
      {"@SQR(-4)", "-4"},
      {"@EXP(1000)", "1000"},
  });
}

TEST(Calculation, NumbersThatStandTogetherReadAsOne) {
  CheckAll({
      {"2(3)", "23"},
      {"(2+3)(4)", "54"},
      {"2@ABS(-3)", "23"},
      {"1 2", "12"},
      {".5+5.", "5.5"},
      {"3.5.2", "3.5"},
      {"1,000+1", "1"},
      {"1E3", "1000"},
      {"1E3+1", "10000"},
  });
}

TEST(Calculation, TabsAndEndsOfLinesSayNothing) {
  CheckAll({
      {"5\n+7", "12"},
      {"5\r\n-\t7", "-2"},
      {"1\t000", "1000"},
      {"@ABS(\n-3\n)*\t2", "6"},
      {"\t", "0"},
  });
  EvaluationClass evaluation;
  evaluation.NuevaFuncion("ADD", "X\t+\n2");
  Check(evaluation, {"@ADD(5)", "7"});
}

TEST(Calculation, MalformedTexts) {
  CheckAll({
      {"", "0", 5},
      {" ", "0"},
      {"1+", "1"},
      {"2*", "0"},
      {"2^", "1"},
      {"*2", "0"},
      {"/2", "0"},
      {"2/0", "0", 8},
      {"2/", "0", 8},
      {"1+2/0", "1", 8},
      {"(2/0)+(1+1)", "1", 8},
      {"(1+2", "", 6},
      {"@ABS(1", "", 6},
      {"()", "0"},
      {"2+()", "2"},
      {"1+2)", "3"},
      {"3)-3", "3"},
      {"@PI", "0", 10},
      {"@", "0", 10},
      {"@FOO(1)", "0", 11},
      {"2+@FOO(1)", "2", 11},
      {"2A-1", "2"},
  });
}

TEST(Calculation, StepsThatCannotBeComputed) {
  CheckAll({
      {"(0-2)^0.5", "-2"},
      {"0^-1", "0"},
      {"5+0^-1", "5"},
      {"2^3+0^-1", "16"},
      {"5-2^0.5", "5"},
      {"10^400", "0"},
  });
}

TEST(Calculation, TextsThatWouldStayAsTheyAreEnd) {
  CheckAll({
      {"1E-07", "0.0000001"},
      {"1E-07-3", "0.0000001"},
      {"3)-3+1", "3"},
      {"[-1", "0"},
      {"-[-1", "0"},
      {"-", "0"},
      {"--", "0"},
      {"-+-+", "0"},
      {"+-*/^", "0"},
  });
}

TEST(Calculation, TextBeyondAsciiAndLongTexts) {
  EvaluationClass evaluation;
  Check(evaluation, {"۲+۳", "0"});
  Check(evaluation, {"2+۳", "2"});
  Check(evaluation, {"2+\xFF\xC3", "2"});
  Check(evaluation, {"گزارش", "0"});
  const std::string ones(125, '1');
  Check(evaluation, {(ones + "*0ش").c_str(), "0"});
  Check(evaluation, {(ones + "*0ش1").c_str(), "", 1});
  Check(evaluation, {std::string(32768, '1').c_str(), "", 14});
  // Characters are counted, not bytes.
  Check(evaluation, {("1+1" + std::string(32700, ' ') + "ش").c_str(), "2"});
  std::string letters;
  for (int i = 0; i < 100; ++i) letters += "ش";
  Check(evaluation, {(letters + std::string(32667, '1')).c_str(), "0"});
  Check(evaluation, {(letters + std::string(32668, '1')).c_str(), "", 14});
  EXPECT_EQ(evaluation.DErr(), "");
  evaluation.Expresion(letters + letters);
  evaluation.ObtieneVar();
  EXPECT_EQ(evaluation.CErr(), 1);
  evaluation.NuevaVar(letters + letters, 1);
  EXPECT_EQ(evaluation.CErr(), 1);
  EXPECT_EQ(evaluation.CuentaVar(), 0);
}

TEST(Calculation, DeepAndEndlessFormulasEnd) {
  EvaluationClass evaluation;
  evaluation.NuevaFuncion("f", "@F(X)+@F(X)");
  Check(evaluation, {"@F(1)", "", 13});
  evaluation.NuevaFuncion("d0", "X+1");
  for (int i = 1; i <= 60; ++i) {
    const std::string inner = "@D" + std::to_string(i - 1) + "(X)";
    evaluation.NuevaFuncion("d" + std::to_string(i), inner + "+" + inner);
  }
  Check(evaluation, {"@D3(1)", "16"});
  Check(evaluation, {"@D60(1)", "", 13});
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '(') + "1+1" + std::string(depth, ')');
  };
  Check(evaluation, {nested(249).c_str(), "2"});
  Check(evaluation, {nested(250).c_str(), "", 13});
  Check(evaluation, {nested(16000).c_str(), "", 13});
  std::string sum = "1";
  while (sum.size() + 2 <= 32767) sum += "+1";
  Check(evaluation, {sum.c_str(), "16384"});
  std::string grow = "9^9";
  while (grow.size() + 4 <= 32767) grow += "+9^9";
  Check(evaluation, {grow.c_str(), "", 14});
}

TEST(Calculation, UserFunctions) {
  EvaluationClass evaluation;
  evaluation.NuevaFuncion("sq", "X^2");
  evaluation.NuevaFuncion("less", "1 - X * 2");
  evaluation.NuevaFuncion("minus", "5-X");
  evaluation.NuevaFuncion("twice", "@SQ(@SQ(X))");
  evaluation.NuevaFuncion("e", "@EXP(X)");
  evaluation.NuevaFuncion("abs", "X+100");
  evaluation.NuevaFuncion("open", "(X+1");
  evaluation.NuevaFuncion("gap", "5 -X^2");
  evaluation.NuevaFuncion("front", "(  -X^2)");
  Check(evaluation, {"@SQ(-3)", "9"});
  Check(evaluation, {"@less(3)", "-5"});
  Check(evaluation, {"@LESS(-3)", "7"});
  Check(evaluation, {"@MINUS(-3)", "8"});
  Check(evaluation, {"@TWICE(2)+@SQ(1)", "17"});
  Check(evaluation, {"@E(1)", "0", 11});  // the X of @EXP is replaced too
  Check(evaluation, {"@ABS(-1)", "1"});   // a built-in comes first
  Check(evaluation, {"1+@OPEN(1)", "1", 6});
  Check(evaluation, {"@GAP(3)", "-4"});
  Check(evaluation, {"@FRONT(3)", "9"});
}

TEST(Calculation, Variables) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("A", -5);
  evaluation.NuevaVar("AB", "2");
  Check(evaluation, {"2-a", "7"});
  Check(evaluation, {"A*AB", "-10"});
  Check(evaluation, {"A^2", "25"});
  Check(evaluation, {"AB-A_", "0", 4});
  Check(evaluation, {"1+1", "0", 4});  // A_ stays without a value
  evaluation.RemVar("A_");
  Check(evaluation, {"1+1", "2"});
  evaluation.NuevaVar("5", 5);
  evaluation.NuevaVar("7", -7);
  evaluation.NuevaVar("", 3);
  Check(evaluation, {"5+7", "-2"});
  Check(evaluation, {"{A}", "0"});
  evaluation.NuevaVar("BA", 3);
  Check(evaluation, {"A+BA", "-2"});
}

TEST(Calculation, NamesOfOtherSignsAreLookedForAnew) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("+", 2);
  Check(evaluation, {"(+)*(+)", "4"});
  evaluation.NuevaVar("*-", -7);
  Check(evaluation, {"(*-)", "-7"});
  evaluation.NuevaVar(".", 0.5);  // its value holds it
  Check(evaluation, {"(.)*(.)", "0.25"});
}

TEST(Calculation, ValuesThatGrowBeyondATextEnd) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("A", 123456789012345.0);
  std::string sum = "A";
  while (sum.size() + 2 <= 32767) sum += "+A";
  Check(evaluation, {sum.c_str(), "", 14});
}

TEST(Calculation, WarnsOfNumbersBeyondTheNormalSize) {
  RecordedNotices notices;
  EvaluationOptions options;
  options.notices = &notices;
  EvaluationClass evaluation(options);
  const std::string title =
      "اشکال در محاسبات |از آنجايي كه اندازه اعداد از حد نرمال خود "
      "بيشتر شده است احتمال اشکال ";
  Check(evaluation, {"1000000*1000000", "1000000000000"});
  EXPECT_TRUE(notices.messages.empty());
  Check(evaluation, {"10000000000*10000000000", "1E+20"});
  ASSERT_EQ(notices.messages.size(), 1U);
  EXPECT_EQ(notices.messages[0], title + "وحود دارد");
  Check(evaluation, {"10000000000*10000000000+5", "1E+25"});
  Check(evaluation, {"@PI1E+20", "0", 10});
  ASSERT_EQ(notices.messages.size(), 3U);
  EXPECT_EQ(notices.messages[1], title + "وحود دارد");
  EXPECT_EQ(notices.messages[2], title + "وجود دارد");
}

}  // namespace
}  // namespace vorek
