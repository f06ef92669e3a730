#ifndef VOREK_EVAL_EVALUATION_STATE_H_
#define VOREK_EVAL_EVALUATION_STATE_H_

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "eval/keyed_list.h"
#include "vorek/evaluation.h"

namespace vorek {

struct EvaluationClass::State {
  EvaluationOptions options;
  std::string expresion;
  KeyedList<VariableClass> variables;
  KeyedList<FunctionClass> functions;
  std::int16_t code = 0;
  bool keeps_file = false;  // there is a function file, and what it held is in the list
  // What was done to the functions since the file was written; null for one that was removed.
  std::map<std::string, std::optional<FunctionClass>> changed;

  void ReadFile();
  void GuardaFunciones();
  void Note(const std::string& name, std::optional<FunctionClass> function,
            const std::function<void()>& change);
  // The functions of the file, which others may have written since, with what was done here.
  KeyedList<FunctionClass> Merged(const std::string& file) const;
  std::size_t FindVariable(const DynamicValue& variable) const;  // 0 if unknown, as below
  std::size_t FindFunction(const DynamicValue& function) const;
};

}  // namespace vorek

#endif  // VOREK_EVAL_EVALUATION_STATE_H_
