#include "drive/evaluation_object.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"

namespace vorek::drive {
namespace {

using property::FromText;
using property::ToText;

const std::string& Word(const Arguments& arguments, std::size_t index) {
  if (index < arguments.size()) return arguments[index];
  throw Error(ErrorNumber::kInvalidCall, "An argument is missing.");
}

DynamicValue Value(const std::string& word) {
  const DynamicValue text = word;
  return text.IsNumeric() ? DynamicValue(text.Number()) : text;
}

DynamicValue Value(const Arguments& arguments, std::size_t index) {
  return Value(Word(arguments, index));
}

std::int16_t Position(const Arguments& arguments) {
  const std::int32_t position = property::Argument(arguments, 0);
  const auto narrow = static_cast<std::int16_t>(position);
  if (narrow == position) return narrow;
  throw Error(ErrorNumber::kOverflow, "Overflow: " + std::to_string(position));
}

// Members that give nothing print an empty text.
template <typename Act>
Method Procedure(std::string_view name, Act act) {
  return {name, [act](const Arguments& arguments) {
            act(arguments);
            return std::string();
          }};
}

std::vector<Method> VariableMembers(EvaluationClass& e) {
  return {
      Procedure("ObtieneVar", [&e](const Arguments&) { e.ObtieneVar(); }),
      Procedure("RemVar", [&e](const Arguments& a) { e.RemVar(Value(a, 0)); }),
      Procedure("LimpiaVar", [&e](const Arguments&) { e.LimpiaVar(); }),
      Procedure("NuevoValor",
                [&e](const Arguments& a) {
                  if (a.size() < 2)
                    e.NuevoValor(Value(a, 0));
                  else
                    e.NuevoValor(Value(a, 0), Value(a, 1));
                }),
      Procedure("NuevaVar",
                [&e](const Arguments& a) {
                  e.NuevaVar(Word(a, 0), a.size() > 1 ? Value(a, 1) : DynamicValue(),
                             a.size() > 2 && FromText<bool>(a[2]));
                }),
      {"CuentaVar", [&e](const Arguments&) { return ToText(e.CuentaVar()); }},
      {"NombreVar", [&e](const Arguments& a) { return e.NombreVar(Position(a)); }},
      {"Valor", [&e](const Arguments& a) { return e.Valor(Value(a, 0)).Text(); }},
      {"VerificaVar", [&e](const Arguments&) { return ToText(e.VerificaVar()); }},
  };
}

std::vector<Method> FunctionMembers(EvaluationClass& e) {
  return {
      Procedure("NuevaFuncion",
                [&e](const Arguments& a) { e.NuevaFuncion(Word(a, 0), Word(a, 1)); }),
      Procedure("RemFuncion", [&e](const Arguments& a) { e.RemFuncion(Value(a, 0)); }),
      Procedure("ModiFuncion",
                [&e](const Arguments& a) { e.ModiFuncion(Value(a, 0), std::string(Word(a, 1))); }),
      {"NombreFuncion", [&e](const Arguments& a) { return e.NombreFuncion(Position(a)); }},
      {"DefFuncion", [&e](const Arguments& a) { return e.DefFuncion(Value(a, 0)); }},
      {"CuentaFuncion", [&e](const Arguments&) { return ToText(e.CuentaFuncion()); }},
  };
}

std::vector<Method> Members(EvaluationClass& e) {
  std::vector<Method> members = {
      {"Expresion", [&e](const Arguments&) { return e.Expresion(); }},
      {"AnalizaExpr", [&e](const Arguments&) { return e.AnalizaExpr().Text(); }},
      {"CErr", [&e](const Arguments&) { return ToText(std::int32_t{e.CErr()}); }},
      {"DErr", [&e](const Arguments&) { return e.DErr(); }},
  };
  for (std::vector<Method>& more : std::vector{VariableMembers(e), FunctionMembers(e)}) {
    members.insert(members.end(), more.begin(), more.end());
  }
  return members;
}

class EvaluationMembers : public Object {
 public:
  explicit EvaluationMembers(EvaluationClass& evaluation)
      : evaluation_(evaluation), members_(Members(evaluation)) {}

  std::string Get(const std::string& member, const Arguments& arguments) override {
    return CallMethod(members_, member, arguments);
  }
  std::string Call(const std::string& member, const Arguments& arguments) override {
    return CallMethod(members_, member, arguments);
  }
  void Set(const std::string& member, const Arguments&, const std::string& value) override {
    if (!text::EqualsIgnoreCase(member, "Expresion")) {
      throw Error(ErrorNumber::kItemNotFound, "there is no property to set: " + member);
    }
    evaluation_.Expresion(value);
  }

 private:
  EvaluationClass& evaluation_;
  std::vector<Method> members_;
};

}  // namespace

std::unique_ptr<Object> EvaluationObject(EvaluationClass& evaluation) {
  return std::make_unique<EvaluationMembers>(evaluation);
}

}  // namespace vorek::drive
