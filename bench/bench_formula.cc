// A formula of a calculated column over many rows: by rewriting text, prepared, and by muParser,
// which knows other rules and rounds nothing, for comparison.
#include <benchmark/benchmark.h>
#include <muParser.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "eval/formula_template.h"
#include "eval/prepared_formula.h"
#include "vorek/evaluation.h"

namespace {

using vorek::EvaluationClass;
using vorek::FormulaTemplate;
using vorek::PreparedFormula;

constexpr std::size_t kRows = 1024;
using Row = std::array<double, 3>;

// "a", "b" and "c" are the numbers of a row.
const std::vector<std::string>& Formulas() {
  // A product from 1E+15 on warns its user, which takes the text: "a-b*c/100" on whole numbers.
  static const std::vector<std::string> formulas = {
      "(a+b*2)/c", "a+b",         "a-b*c/100",     "@SQR(a*a+b*b)", "a-b-c+a-b+c",  "ab+c",
      "-a+b",      "(a-b)/b*100", "a*(100-9)/100", "@ABS(a-b)",     "a*1.09-(-b+c)"};
  return formulas;
}

FormulaTemplate Template(const std::string& text) {
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

// Whole amounts (0) or amounts with two decimals (1), some of them negative.
std::vector<Row> Rows(bool decimals) {
  std::vector<Row> rows(kRows);
  std::size_t state = 12345;
  for (Row& row : rows) {
    for (double& value : row) {
      state = state * 6364136223846793005U + 1442695040888963407U;
      const auto amount = static_cast<double>((state >> 33U) % 100000000U) + 1;
      value = (decimals ? amount / 100 : amount) * ((state >> 60U) == 0 ? -1 : 1);
    }
  }
  return rows;
}

void Label(benchmark::State& state, const std::string& formula) {
  state.SetItemsProcessed(state.iterations() * static_cast<long>(kRows));
  state.SetLabel(formula + (state.range(1) != 0 ? " decimals" : " whole"));
}

const std::string& FormulaOf(const benchmark::State& state) {
  return Formulas()[static_cast<std::size_t>(state.range(0))];
}

void Prepared(benchmark::State& state) {
  const std::vector<Row> rows = Rows(state.range(1) != 0);
  EvaluationClass evaluation;
  PreparedFormula formula(evaluation, Template(FormulaOf(state)));
  for (auto _ : state) {
    for (const Row& row : rows) benchmark::DoNotOptimize(formula.Evaluate(row));
  }
  Label(state, FormulaOf(state));
}

void Reference(benchmark::State& state) {
  const std::vector<Row> rows = Rows(state.range(1) != 0);
  EvaluationClass evaluation;
  const FormulaTemplate formula = Template(FormulaOf(state));
  for (auto _ : state) {
    for (const Row& row : rows) {
      evaluation.Expresion(formula.Fill(row));
      benchmark::DoNotOptimize(evaluation.AnalizaExpr());
    }
  }
  Label(state, FormulaOf(state));
}

void MuParserCompiled(benchmark::State& state) {
  const std::vector<Row> rows = Rows(state.range(1) != 0);
  Row values{};
  mu::Parser parser;
  parser.DefineVar("a", values.data());
  parser.DefineVar("b", &values[1]);
  parser.DefineVar("c", &values[2]);
  parser.SetExpr(FormulaOf(state));
  for (auto _ : state) {
    for (const Row& row : rows) {
      values = row;
      benchmark::DoNotOptimize(parser.Eval());
    }
  }
  Label(state, FormulaOf(state));
}

void MuParserReparsed(benchmark::State& state) {
  const std::vector<Row> rows = Rows(state.range(1) != 0);
  const FormulaTemplate formula = Template(FormulaOf(state));
  mu::Parser parser;
  for (auto _ : state) {
    for (const Row& row : rows) {
      parser.SetExpr(formula.Fill(row));
      benchmark::DoNotOptimize(parser.Eval());
    }
  }
  Label(state, FormulaOf(state));
}

// muParser knows neither "@" nor numbers that stand together.
BENCHMARK(Prepared)->ArgsProduct({{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {0, 1}});
BENCHMARK(Reference)->ArgsProduct({{0, 1, 2, 3, 4, 5}, {0, 1}});
BENCHMARK(MuParserCompiled)->ArgsProduct({{0, 1, 2, 4}, {0, 1}});
BENCHMARK(MuParserReparsed)->ArgsProduct({{0, 1, 2, 4}, {0, 1}});

}  // namespace

BENCHMARK_MAIN();
