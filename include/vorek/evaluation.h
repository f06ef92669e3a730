#ifndef VOREK_EVALUATION_H_
#define VOREK_EVALUATION_H_

#include <cstdint>
#include <memory>
#include <string>

#include "vorek/dynamic_value.h"

namespace vorek {

class Files;
class Notices;
class PreparedFormula;
class World;

// A variable of a formula.
class VariableClass {
 public:
  // notices shows the message of a refused write and has to outlive the variable; null shows none.
  explicit VariableClass(Notices* notices = nullptr) : notices_(notices) {}

  // The name as first written. Starts as the empty text.
  const std::string& Nombre() const { return nombre_; }
  void Nombre(const std::string& nombre) { nombre_ = nombre; }

  // The current value. Starts as null.
  const DynamicValue& Valor() const { return valor_; }
  void Valor(const DynamicValue& valor) { valor_ = valor; }

  // The default value. Starts as null and can be written as long as it is null; a later write
  // changes nothing and shows a message.
  const DynamicValue& Predeterminado() const { return predeterminado_; }
  void Predeterminado(const DynamicValue& predeterminado);

 private:
  std::string nombre_;
  DynamicValue valor_ = DynamicValue::Null();
  DynamicValue predeterminado_ = DynamicValue::Null();
  Notices* notices_;
};

// A user function: a formula over the one variable X.
class FunctionClass {
 public:
  // The key: upper case, with its leading "@".
  const std::string& Nombre() const { return nombre_; }
  void Nombre(const std::string& nombre) { nombre_ = nombre; }

  // The body. A write that names another variable than X, or none, leaves the empty text. Once X
  // has been named, a later body without any variable is taken as well.
  const std::string& Definicion() const { return definicion_; }
  void Definicion(const std::string& definicion);

 private:
  int CuentaVarDef(const std::string& definicion);

  std::string nombre_;
  std::string definicion_;
  std::string last_variable_;
};

// What an evaluator sees of the world. The pointers have to outlive it; null stands for nothing.
struct EvaluationOptions {
  std::string function_file;  // keeps the user functions; empty: they live as long as the evaluator
  Files* files = nullptr;     // reads and writes that file
  Notices* notices = nullptr;  // shows warnings about the size of numbers
};

// What the controls of a world give their evaluators: the world's function file, its files and its
// message forms. The world has to outlive the evaluator.
EvaluationOptions EvaluationOptionsOf(World& world);

// Computes formulas written as text; docs/formulas.md tells the language. Used from one thread.
//
// Most operations set CErr to 0 when they begin and to their outcome when they fail; read it right
// after the operation. LimpiaVar, NombreFuncion, DefFuncion and the counts leave it alone. Nothing
// here throws for a formula, a name or a value that is wrong.
class EvaluationClass {
 public:
  // Reads the function file, if there is one; a damaged line of it is passed over.
  explicit EvaluationClass(const EvaluationOptions& options = {});
  EvaluationClass(const EvaluationClass&) = delete;
  EvaluationClass& operator=(const EvaluationClass&) = delete;
  // Writes the function file, unless it was there and couldn't be read.
  ~EvaluationClass();

  // The formula as written.
  const std::string& Expresion() const;
  void Expresion(const std::string& expresion);

  // Computes the formula. A number, or empty for a formula that is refused.
  DynamicValue AnalizaExpr();

  // Registers each variable that the formula names, with an empty value.
  void ObtieneVar();
  // True if each variable has a value that isn't empty; else code 4.
  bool VerificaVar();

  // Adds a variable with its value and default. A value that is neither numeric nor empty is set to
  // empty (code 3). A name that is there changes nothing: code 7, unless bMudo.
  void NuevaVar(const std::string& strNombre, DynamicValue& varValor, bool bMudo = false);
  void NuevaVar(const std::string& strNombre, DynamicValue&& varValor, bool bMudo = false);
  void NuevaVar(const std::string& strNombre);

  // In the following, varVariable is a position from 1 (a number, or a text that reads as one) or
  // a name in any case. An unknown variable gives code 2.

  // Sets a variable's value. Without a value, or with one that is neither numeric nor empty (code
  // 3, and varValor takes the default as well), the variable goes back to its default.
  void NuevoValor(const DynamicValue& varVariable, DynamicValue& varValor);
  void NuevoValor(const DynamicValue& varVariable, DynamicValue&& varValor);
  void NuevoValor(const DynamicValue& varVariable);
  // The value; the number 0 for an unknown variable.
  DynamicValue Valor(const DynamicValue& varVariable);
  void RemVar(const DynamicValue& varVariable);
  void LimpiaVar();
  std::int32_t CuentaVar() const;
  std::string NombreVar(std::int16_t iCualVariable);

  // Adds a user function and saves the file. Codes: 9 for an "@" inside the name, 10 for a refused
  // body, 12 for a name that is there.
  void NuevaFuncion(const std::string& Nombre, const std::string& Definicion);
  // In the following, Nombre is a position from 1 (a number) or a key with its "@" (a text). An
  // unknown function gives code 11.
  void RemFuncion(const DynamicValue& Nombre);
  // Definicion comes back trimmed and in upper case. Code 10 for a refused body.
  void ModiFuncion(const DynamicValue& Nombre, std::string& Definicion);
  void ModiFuncion(const DynamicValue& Nombre, std::string&& Definicion);
  // The empty text for an unknown function, without a code.
  std::string NombreFuncion(std::int16_t Numero) const;
  std::string DefFuncion(const DynamicValue& CualFuncion) const;
  std::int32_t CuentaFuncion() const;

  // The last failure, 0 for none, and its text:
  //   1 characters  2 no such variable  3 value not numeric  4 a variable has no value
  //   5 no formula  6 brackets  7 variable exists  8 division by zero  9 function name
  //   10 function definition or call  11 no such function  12 function exists
  //   13 functions or brackets nested too deep or too much work  14 text too long
  std::int16_t CErr() const;
  std::string DErr() const;

 private:
  friend class PreparedFormula;
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vorek

#endif  // VOREK_EVALUATION_H_
