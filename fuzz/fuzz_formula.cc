// A formula on the first line, bodies of the user functions @F and @G on the next two. The letters
// a to c are places of numbers, taken from the end of the input. The formula has to end, and its
// prepared form has to agree with it.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "eval/formula_template.h"
#include "eval/prepared_formula.h"
#include "vorek/evaluation.h"

namespace {

using vorek::DynamicValue;
using vorek::EvaluationClass;
using vorek::FormulaTemplate;
using vorek::PreparedFormula;

constexpr std::size_t kSlots = 3;
using Values = std::array<double, kSlots>;

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

// Three bytes for a number: two of digits, one for its sign and scale.
Values TakeValues(std::string_view& text) {
  Values values{};
  for (double& value : values) {
    if (text.size() < 3) break;
    const std::string_view bytes = text.substr(text.size() - 3);
    text.remove_suffix(3);
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    constexpr std::array<double, 8> kScales = {1, 1, 0.01, 0.0625, 1e6, 1e11, 1e-7, 1.0 / 3};
    value = (byte(0) * 256 + byte(1)) * kScales[byte(2) % 8] * (byte(2) >= 128 ? -1 : 1);
  }
  return values;
}

FormulaTemplate Template(std::string_view line) {
  FormulaTemplate formula;
  for (const char c : line) {
    if (c >= 'a' && c <= 'c') {
      formula.AddPlace(static_cast<std::size_t>(c - 'a'));
    } else {
      formula.AddText(std::string_view(&c, 1));
    }
  }
  return formula;
}

void Require(bool holds, const std::string& text) {
  if (holds) return;
  std::fprintf(stderr, "the prepared form differs: %s\n", text.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const Values values = TakeValues(input);
  const FormulaTemplate formula = Template(TakeLine(input));
  EvaluationClass reference;
  EvaluationClass evaluation;
  for (const char* name : {"F", "G"}) {
    const std::string body(TakeLine(input));
    reference.NuevaFuncion(name, body);
    evaluation.NuevaFuncion(name, body);
  }
  const std::string text = formula.Fill(values);
  reference.Expresion(text);
  const DynamicValue expected = reference.AnalizaExpr();
  PreparedFormula prepared(evaluation, formula);
  const vorek::WorkingValue value = prepared.Evaluate(values);
  Require(value.has_value() == expected.IsNumber(), text);
  Require(vorek::NumberText(value) == expected.Text(), text);
  Require(value.value_or(0) == expected.Number(), text);
  Require(evaluation.CErr() == reference.CErr(), text);
  return 0;
}
