#include <cctype>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"
#include "state/notices.h"
#include "vorek/evaluation.h"
#include "vorek/system.h"

namespace vorek {
namespace {

struct EvalOptions {
  std::string formula;
  std::vector<std::string> variables;
  std::string functions;
  bool code = false;
};

// Warnings go to the standard error stream, so that the values can be piped on.
class ErrorStreamNotices : public Notices {
 public:
  void ShowMessage(const std::string& title, const std::string& message) override {
    std::cerr << title << ": " << message << '\n';
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

[[noreturn]] void RefuseUsage(const std::string& reason) {
  throw CLI::ValidationError("eval", reason);
}

void AddVariable(EvaluationClass& evaluation, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) RefuseUsage("--var takes NAME=NUMBER: " + text);
  evaluation.NuevaVar(text.substr(0, equals), text.substr(equals + 1));
  if (evaluation.CErr() != 0) RefuseUsage("--var " + text + ": " + evaluation.DErr());
}

std::string Value(EvaluationClass& evaluation, const std::string& formula) {
  evaluation.Expresion(formula);
  return evaluation.AnalizaExpr().Text();
}

// A formula a line. What a line names and nobody gave a value is forgotten again, so that it
// doesn't refuse the lines behind it.
void EvaluateLines(EvaluationClass& evaluation, bool with_text) {
  const std::int32_t given = evaluation.CuentaVar();
  for (std::string line; std::getline(std::cin, line);) {
    if (line.ends_with('\r')) line.pop_back();
    std::cout << Value(evaluation, line) << '\t' << evaluation.CErr();
    if (with_text) std::cout << '\t' << evaluation.DErr();
    std::cout << '\n';
    while (evaluation.CuentaVar() > given) evaluation.RemVar(given + 1);
  }
}

// A script must not take the value of a formula with an error for a figure.
void EvaluateOne(EvaluationClass& evaluation, const EvalOptions& options) {
  const std::string value = Value(evaluation, options.formula);
  if (options.code) {
    std::cout << value << '\t' << evaluation.CErr() << '\t' << evaluation.DErr() << '\n';
  } else if (evaluation.CErr() == 0) {
    std::cout << value << '\n';
  } else {
    std::cerr << "vorek: CErr " << evaluation.CErr() << ' ' << evaluation.DErr() << '\n';
    throw CLI::RuntimeError(1);
  }
}

void Evaluate(const EvalOptions& options) {
  const std::shared_ptr<Files> files = MachineFiles();
  ErrorStreamNotices notices;
  EvaluationClass evaluation({MachineFunctionFile(options.functions), files.get(), &notices});
  for (const std::string& variable : options.variables) AddVariable(evaluation, variable);
  if (options.formula == "-") {
    EvaluateLines(evaluation, options.code);
  } else {
    EvaluateOne(evaluation, options);
  }
  std::cout.flush();
}

// A formula may begin with "-", which looks like an option that nobody knows.
void TakeFormula(const CLI::App& command, EvalOptions& options) {
  std::vector<std::string> others = command.remaining();
  std::erase(others, "--");  // only ends the options
  if (options.formula.empty() && command.count("FORMULA") == 0 && !others.empty()) {
    options.formula = others.front();
    others.erase(others.begin());
    const bool option = options.formula.starts_with("--") && options.formula.size() > 2 &&
                        std::isalpha(static_cast<unsigned char>(options.formula[2])) != 0;
    if (option) RefuseUsage("no such option: " + options.formula);
  } else if (command.count("FORMULA") == 0) {
    RefuseUsage("FORMULA is required");
  }
  if (!others.empty()) RefuseUsage("more than one formula: " + others.front());
}

}  // namespace

void AddEvalCommand(CLI::App& app) {
  auto options = std::make_shared<EvalOptions>();
  CLI::App* const command = app.add_subcommand("eval", "Compute a formula");
  command->add_option("FORMULA", options->formula, "the formula; - reads one a line");
  command->add_option("--var", options->variables, "NAME=NUMBER of a variable; may be repeated")
      ->allow_extra_args(false);
  command->add_option("--functions", options->functions, "the file of the user functions");
  command->add_flag("--code", options->code, "print CErr and DErr too");
  command->allow_extras();
  command->callback([options, command] {
    TakeFormula(*command, *options);
    Evaluate(*options);
  });
}

}  // namespace vorek
