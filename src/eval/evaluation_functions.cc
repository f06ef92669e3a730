#include <string>
#include <utility>

#include "eval/evaluation_code.h"
#include "eval/evaluation_state.h"
#include "eval/function_file.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/files.h"

namespace vorek {

// A file that is there and can't be read isn't written either: that would lose what it holds.
void EvaluationClass::State::ReadFile() {
  const std::string& path = options.function_file;
  if (path.empty() || options.files == nullptr) return;
  keeps_file = IgnoreErrors([&] {
    if (options.files->Exists(path)) ReadFunctions(options.files->Read(path), functions);
  });
}

void EvaluationClass::State::GuardaFunciones() {
  if (!keeps_file) return;
  IgnoreErrors([&] {
    const std::string& path = options.function_file;
    options.files->MakeFoldersFor(path);
    const std::unique_ptr<FileLock> lock = options.files->Lock(path);
    const std::string before = options.files->Exists(path) ? options.files->Read(path) : "";
    // What isn't a function file any more holds nothing of others.
    options.files->Write(path, WriteFunctions(IsFunctionFile(before) ? Merged(before) : functions));
    changed.clear();
  });
}

// Both the list and what was noted, or neither, change.
void EvaluationClass::State::Note(const std::string& name, std::optional<FunctionClass> function,
                                  const std::function<void()>& change) {
  std::map<std::string, std::optional<FunctionClass>> noted;
  noted.emplace(name, std::move(function));
  change();
  changed.erase(noted.begin()->first);
  changed.merge(noted);
}

KeyedList<FunctionClass> EvaluationClass::State::Merged(const std::string& file) const {
  KeyedList<FunctionClass> merged;
  ReadFunctions(file, merged);
  for (const auto& [name, function] : changed) {
    const std::size_t position = merged.Position(name);
    if (position == 0) {
      if (function) merged.Add(name, *function);
    } else if (function) {
      merged.At(position) = *function;
    } else {
      merged.Remove(position);
    }
  }
  return merged;
}

std::size_t EvaluationClass::State::FindVariable(const DynamicValue& variable) const {
  if (variable.IsNumeric()) return variables.Position(variable.Number());
  return variable.IsText() ? variables.Position(variable.Text()) : 0;
}

std::size_t EvaluationClass::State::FindFunction(const DynamicValue& function) const {
  if (function.IsNumber()) return functions.Position(function.Number());
  return function.IsText() ? functions.Position(function.Text()) : 0;
}

void EvaluationClass::NuevaFuncion(const std::string& Nombre, const std::string& Definicion) {
  State& state = *state_;
  state.code = evaluation_code::kNone;
  std::string name = text::ToUpper(text::TrimView(Nombre));
  if (!text::Contains(name, "@")) name.insert(0, "@");
  if (name.front() != '@') {
    state.code = evaluation_code::kFunctionName;
    return;
  }
  FunctionClass function;
  function.Nombre(name);
  function.Definicion(text::ToUpper(text::TrimView(Definicion)));
  if (function.Definicion().empty()) {
    state.code = evaluation_code::kDefinition;
  } else if (state.functions.Position(name) != 0) {
    state.code = evaluation_code::kFunctionExists;
  } else {
    state.Note(name, function, [&] { state.functions.Add(name, std::move(function)); });
    state.GuardaFunciones();
  }
}

void EvaluationClass::RemFuncion(const DynamicValue& Nombre) {
  const std::size_t position = state_->FindFunction(Nombre);
  state_->code = position == 0 ? evaluation_code::kNoFunction : evaluation_code::kNone;
  if (position == 0) return;
  state_->Note(state_->functions.Key(position), std::nullopt,
               [&] { state_->functions.Remove(position); });
  state_->GuardaFunciones();
}

void EvaluationClass::ModiFuncion(const DynamicValue& Nombre, std::string& Definicion) {
  State& state = *state_;
  state.code = evaluation_code::kNone;
  Definicion = text::Trim(text::ToUpper(Definicion));
  FunctionClass scratch;
  scratch.Definicion(Definicion);
  const std::size_t position = state.FindFunction(Nombre);
  if (scratch.Definicion().empty()) {
    state.code = evaluation_code::kDefinition;
  } else if (position == 0) {
    state.code = evaluation_code::kNoFunction;
  } else {
    FunctionClass function = state.functions.At(position);
    function.Definicion(Definicion);
    state.Note(state.functions.Key(position), function,
               [&] { state.functions.At(position) = std::move(function); });
    state.GuardaFunciones();
  }
}

void EvaluationClass::ModiFuncion(const DynamicValue& Nombre, std::string&& Definicion) {
  ModiFuncion(Nombre, Definicion);
}

std::string EvaluationClass::NombreFuncion(std::int16_t Numero) const {
  const std::size_t position = state_->functions.Position(static_cast<double>(Numero));
  return position == 0 ? "" : state_->functions.At(position).Nombre();
}

std::string EvaluationClass::DefFuncion(const DynamicValue& CualFuncion) const {
  const std::size_t position = state_->FindFunction(CualFuncion);
  return position == 0 ? "" : state_->functions.At(position).Definicion();
}

std::int32_t EvaluationClass::CuentaFuncion() const {
  return static_cast<std::int32_t>(state_->functions.Size());
}

}  // namespace vorek
