#include <utility>

#include "eval/calculation.h"
#include "eval/evaluation_code.h"
#include "eval/evaluation_state.h"
#include "eval/limits.h"
#include "eval/name_scan.h"
#include "eval/substitution.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {

namespace {

bool IsTooLong(const std::string& text) {
  return text.size() > kMostCharacters && text::Length(text) > kMostCharacters;
}

}  // namespace

EvaluationClass::EvaluationClass(const EvaluationOptions& options)
    : state_(std::make_unique<State>()) {
  state_->options = options;
  state_->ReadFile();
}

EvaluationClass::~EvaluationClass() {
  IgnoreAllErrors([this] { state_->GuardaFunciones(); });
}

const std::string& EvaluationClass::Expresion() const { return state_->expresion; }
void EvaluationClass::Expresion(const std::string& expresion) { state_->expresion = expresion; }

std::int16_t EvaluationClass::CErr() const { return state_->code; }
std::string EvaluationClass::DErr() const {
  return std::string(evaluation_code::Description(state_->code));
}

DynamicValue EvaluationClass::AnalizaExpr() {
  State& state = *state_;
  state.code = evaluation_code::kNone;
  if (state.expresion.empty()) {
    state.code = evaluation_code::kNoFormula;
    return 0;
  }
  const bool valid = ValidaCaracteres(state.expresion);
  if (!valid || IsTooLong(state.expresion)) {
    state.code = valid ? evaluation_code::kTooLong : evaluation_code::kCharacters;
    return {};
  }
  ObtieneVar();
  if (!VerificaVar()) return 0;
  Calculation calculation(state.functions, state.options.notices, state.code);
  const WorkingValue value =
      calculation.CalculaExpr(SustituyeVar(state.expresion, state.variables));
  return value ? DynamicValue(*value) : DynamicValue();
}

void EvaluationClass::ObtieneVar() {
  state_->code = evaluation_code::kNone;
  if (!ValidaCaracteres(state_->expresion)) {
    state_->code = evaluation_code::kCharacters;
    return;
  }
  ForEachVariableName(state_->expresion, [this](std::string_view name) {
    NuevaVar(std::string(name), DynamicValue(), true);
  });
}

bool EvaluationClass::VerificaVar() {
  state_->code = evaluation_code::kNone;
  for (const VariableClass& variable : state_->variables) {
    if (!variable.Valor().IsEmpty()) continue;
    state_->code = evaluation_code::kNoValue;
    return false;
  }
  return true;
}

void EvaluationClass::NuevaVar(const std::string& strNombre, DynamicValue& varValor, bool bMudo) {
  State& state = *state_;
  state.code = evaluation_code::kNone;
  if (!varValor.IsNumeric() && !varValor.IsEmpty()) {
    varValor = DynamicValue();
    state.code = evaluation_code::kNotNumeric;
  }
  if (!ValidaCaracteres(strNombre)) {
    state.code = evaluation_code::kCharacters;
    return;
  }
  if (state.variables.Position(strNombre) > 0) {
    if (!bMudo) state.code = evaluation_code::kVariableExists;
    return;
  }
  VariableClass variable(state.options.notices);
  variable.Nombre(strNombre);
  variable.Predeterminado(varValor);
  variable.Valor(varValor);
  state.variables.Add(strNombre, std::move(variable));
}

void EvaluationClass::NuevaVar(const std::string& strNombre, DynamicValue&& varValor, bool bMudo) {
  NuevaVar(strNombre, varValor, bMudo);
}

void EvaluationClass::NuevaVar(const std::string& strNombre) {
  NuevaVar(strNombre, DynamicValue());
}

void EvaluationClass::NuevoValor(const DynamicValue& varVariable, DynamicValue& varValor) {
  State& state = *state_;
  state.code = evaluation_code::kNone;
  const std::size_t position = state.FindVariable(varVariable);
  if (position == 0) {
    state.code = evaluation_code::kNoVariable;
    return;
  }
  VariableClass& variable = state.variables.At(position);
  if (!varValor.IsNumeric() && !varValor.IsEmpty()) {
    varValor = variable.Predeterminado();
    state.code = evaluation_code::kNotNumeric;
  }
  variable.Valor(varValor);
}

void EvaluationClass::NuevoValor(const DynamicValue& varVariable, DynamicValue&& varValor) {
  NuevoValor(varVariable, varValor);
}

void EvaluationClass::NuevoValor(const DynamicValue& varVariable) {
  const std::size_t position = state_->FindVariable(varVariable);
  DynamicValue value;
  if (position > 0) value = state_->variables.At(position).Predeterminado();
  NuevoValor(varVariable, value);
}

DynamicValue EvaluationClass::Valor(const DynamicValue& varVariable) {
  const std::size_t position = state_->FindVariable(varVariable);
  state_->code = position == 0 ? evaluation_code::kNoVariable : evaluation_code::kNone;
  return position == 0 ? DynamicValue(0) : state_->variables.At(position).Valor();
}

void EvaluationClass::RemVar(const DynamicValue& varVariable) {
  const std::size_t position = state_->FindVariable(varVariable);
  state_->code = position == 0 ? evaluation_code::kNoVariable : evaluation_code::kNone;
  if (position > 0) state_->variables.Remove(position);
}

void EvaluationClass::LimpiaVar() { state_->variables.Clear(); }

std::int32_t EvaluationClass::CuentaVar() const {
  return static_cast<std::int32_t>(state_->variables.Size());
}

std::string EvaluationClass::NombreVar(std::int16_t iCualVariable) {
  const std::size_t position = state_->variables.Position(static_cast<double>(iCualVariable));
  state_->code = position == 0 ? evaluation_code::kNoVariable : evaluation_code::kNone;
  return position == 0 ? "" : state_->variables.At(position).Nombre();
}

}  // namespace vorek
