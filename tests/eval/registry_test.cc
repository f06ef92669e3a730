#include <gtest/gtest.h>

#include <string>

#include "recorded_notices.h"
#include "vorek/evaluation.h"

namespace vorek {
namespace {

TEST(DynamicValue, TellsWhatReadsAsANumber) {
  const struct {
    DynamicValue value;
    bool numeric;
  } cases[] = {
      {1.5, true},
      {"12", true},
      {" -1.5E3 ", true},
      {".5", true},
      {"5.", true},
      {"+7", true},
      {"", false},
      {" ", false},
      {"abc", false},
      {"1x", false},
      {"1e", false},
      {"-", false},
      {"1.2.3", false},
      {"1 2", false},
      {"۵", false},
      {{}, false},
      {DynamicValue::Null(), false},
  };
  for (const auto& c : cases) EXPECT_EQ(c.value.IsNumeric(), c.numeric) << c.value.Text();
}

TEST(VariableClass, TheDefaultIsWrittenOnce) {
  RecordedNotices notices;
  VariableClass variable(&notices);
  EXPECT_TRUE(variable.Valor().IsNull());
  EXPECT_TRUE(variable.Predeterminado().IsNull());
  variable.Predeterminado({});
  EXPECT_TRUE(notices.messages.empty());
  variable.Predeterminado(2);
  EXPECT_TRUE(variable.Predeterminado().IsEmpty());
  ASSERT_EQ(notices.messages.size(), 1U);
  EXPECT_EQ(notices.messages[0], "اشكال|El valor predeterminado ya fue asignado");
  VariableClass silent(nullptr);
  silent.Predeterminado(1);
  silent.Predeterminado(2);
  EXPECT_EQ(silent.Predeterminado().Text(), "1");
}

TEST(FunctionClass, ABodyNamesXAndNothingElse) {
  const struct {
    const char* body;
    bool kept;
  } cases[] = {
      {"X+1", true},  {"X*X", true},    {"x+1", true},   {"@SQR(X)", true}, {"2X+X", true},
      {"Y+1", false}, {"X+Y", false},   {"5+1", false},  {"XX", false},     {"2X", false},
      {"", false},    {"@X(1)", false}, {"1E5+X", true}, {"X+Y+X", false},
  };
  for (const auto& c : cases) {
    FunctionClass function;
    function.Definicion(c.body);
    EXPECT_EQ(function.Definicion(), c.kept ? c.body : "") << c.body;
  }
}

TEST(FunctionClass, OnceXWasNamedABodyMayDoWithoutIt) {
  FunctionClass function;
  function.Definicion("X+1");
  function.Definicion("X+2");
  EXPECT_EQ(function.Definicion(), "X+2");
  function.Definicion("5+1");
  EXPECT_EQ(function.Definicion(), "5+1");
  function.Definicion(std::string(130, '1') + "ش+X");
  EXPECT_EQ(function.Definicion(), "");
}

TEST(Registry, FindsTheVariablesOfAFormula) {
  const struct {
    const char* formula;
    const char* names;
  } cases[] = {
      {"a+B_1*Abc", "a B_1 Abc "},
      {"1E5", ""},
      {"2AB", "B "},
      {"@SQR(x)+@f", "x "},
      {"a.b", "a "},
      {"2.A*.B+C", "C "},
      {"a+A", "a "},
      {"_x 1 y", "x y "},
      {"گA", "A "},
  };
  for (const auto& c : cases) {
    EvaluationClass evaluation;
    evaluation.Expresion(c.formula);
    evaluation.ObtieneVar();
    std::string names;
    const auto last = static_cast<std::int16_t>(evaluation.CuentaVar());
    for (std::int16_t i = 1; i <= last; ++i) {
      names += evaluation.NombreVar(i) + " ";
    }
    EXPECT_EQ(names, c.names) << c.formula;
    EXPECT_EQ(evaluation.VerificaVar(), names.empty());
    EXPECT_EQ(evaluation.CErr(), names.empty() ? 0 : 4);
  }
}

TEST(Registry, PositionsAndNamesOfVariables) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("a", 1);
  evaluation.NuevaVar("b", 2);
  evaluation.NuevaVar("c", 3);
  EXPECT_EQ(evaluation.NombreVar(0), "");
  EXPECT_EQ(evaluation.CErr(), 2);
  EXPECT_EQ(evaluation.NombreVar(4), "");
  EXPECT_EQ(evaluation.CErr(), 2);
  EXPECT_EQ(evaluation.NombreVar(1), "a");
  EXPECT_EQ(evaluation.CErr(), 0);
  EXPECT_EQ(evaluation.Valor("1").Text(), "1");
  EXPECT_EQ(evaluation.Valor(2).Text(), "2");
  EXPECT_EQ(evaluation.Valor("C").Text(), "3");
  evaluation.RemVar("B");
  EXPECT_EQ(evaluation.Valor(2).Text(), "3");
  EXPECT_EQ(evaluation.Valor("b"), DynamicValue(0));
  EXPECT_EQ(evaluation.CErr(), 2);
  evaluation.RemVar("b");
  EXPECT_EQ(evaluation.CErr(), 2);
  evaluation.LimpiaVar();
  EXPECT_EQ(evaluation.CErr(), 2);
  EXPECT_EQ(evaluation.CuentaVar(), 0);
}

TEST(Registry, AVariableIsAddedOnce) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("a", 1);
  evaluation.NuevaVar("A", 2);
  EXPECT_EQ(evaluation.CErr(), 7);
  evaluation.NuevaVar("A", 2, true);
  EXPECT_EQ(evaluation.CErr(), 0);
  EXPECT_EQ(evaluation.Valor("a").Text(), "1");
  DynamicValue wrong = "abc";
  evaluation.NuevaVar("b", wrong);
  EXPECT_EQ(evaluation.CErr(), 3);
  EXPECT_TRUE(wrong.IsEmpty());
  EXPECT_TRUE(evaluation.Valor("b").IsEmpty());
}

TEST(Registry, AValueGoesBackToItsDefault) {
  EvaluationClass evaluation;
  evaluation.NuevaVar("a", 1);
  evaluation.NuevoValor("a", 9);
  EXPECT_EQ(evaluation.Valor("a").Text(), "9");
  evaluation.NuevoValor("a");
  EXPECT_EQ(evaluation.Valor("a").Text(), "1");
  evaluation.NuevoValor("a", 9);
  DynamicValue wrong = "abc";
  evaluation.NuevoValor("a", wrong);
  EXPECT_EQ(evaluation.CErr(), 3);
  EXPECT_EQ(wrong, DynamicValue(1));
  EXPECT_EQ(evaluation.Valor("a").Text(), "1");
  evaluation.NuevoValor("x", wrong);
  EXPECT_EQ(evaluation.CErr(), 2);
  evaluation.NuevoValor(DynamicValue::Null(), 1);
  EXPECT_EQ(evaluation.CErr(), 2);
  evaluation.NuevoValor("a", DynamicValue());
  EXPECT_EQ(evaluation.CErr(), 0);
  EXPECT_TRUE(evaluation.Valor("a").IsEmpty());
  evaluation.NuevoValor("x");
  EXPECT_EQ(evaluation.CErr(), 2);
}

TEST(Registry, UserFunctions) {
  EvaluationClass evaluation;
  evaluation.NuevaFuncion(" doble ", " x*2 ");
  EXPECT_EQ(evaluation.NombreFuncion(1), "@DOBLE");
  EXPECT_EQ(evaluation.DefFuncion("@doble"), "X*2");
  const struct {
    const char* name;
    const char* body;
    int code;
  } cases[] = {
      {"@doble", "x+1", 12}, {"a@b", "x", 9}, {"f", "y+1", 10}, {"f", "5", 10}, {"f", "x", 0}};
  for (const auto& c : cases) {
    evaluation.NuevaFuncion(c.name, c.body);
    EXPECT_EQ(evaluation.CErr(), c.code) << c.name << " " << c.body;
  }
  EXPECT_EQ(evaluation.DefFuncion(1), "X*2");
  EXPECT_EQ(evaluation.CuentaFuncion(), 2);
  std::string body = " x+3 ";
  evaluation.ModiFuncion("@F", body);
  EXPECT_EQ(body, "X+3");
  EXPECT_EQ(evaluation.DefFuncion(2), "X+3");
  evaluation.ModiFuncion("@NADA", "y");
  EXPECT_EQ(evaluation.CErr(), 10);
  evaluation.ModiFuncion("f", "x");
  EXPECT_EQ(evaluation.CErr(), 11);
  evaluation.RemFuncion("@NADA");
  EXPECT_EQ(evaluation.CErr(), 11);
  evaluation.RemFuncion(DynamicValue::Null());
  EXPECT_EQ(evaluation.CErr(), 11);
  evaluation.RemFuncion(1);
  EXPECT_EQ(evaluation.CErr(), 0);
  EXPECT_EQ(evaluation.NombreFuncion(1), "@F");
  EXPECT_EQ(evaluation.NombreFuncion(2), "");
  EXPECT_EQ(evaluation.DefFuncion("@DOBLE"), "");
  EXPECT_EQ(evaluation.CErr(), 0);
}

TEST(Registry, TextsOfTheCodes) {
  EvaluationClass evaluation;
  EXPECT_EQ(evaluation.DErr(), "عملگر وجود ندارد.");
  evaluation.Expresion("1/0");
  evaluation.AnalizaExpr();
  EXPECT_EQ(evaluation.DErr(), "فرمول فوق داراي ساختار اشتباه ميباشد");
  evaluation.RemFuncion("@NADA");
  EXPECT_EQ(evaluation.DErr(), "تابع موجود نيست.");
}

}  // namespace
}  // namespace vorek
