#include "eval/name_scan.h"
#include "text/utf8.h"
#include "vorek/evaluation.h"

namespace vorek {

void FunctionClass::Definicion(const std::string& definicion) {
  const int count = CuentaVarDef(definicion);
  const bool accepted = (count == 0 || count == 1) && last_variable_ == "X";
  definicion_ = accepted ? definicion : "";
}

// Counts the changes of the variable's name along the body; -1 for one with refused characters. The
// last name is kept between bodies, so that a new body may name X once more, or not at all.
int FunctionClass::CuentaVarDef(const std::string& definicion) {
  if (!ValidaCaracteres(definicion)) return -1;
  int count = 0;
  ForEachVariableName(definicion, [&](std::string_view name) {
    std::string upper = text::ToUpper(name);
    if (upper == last_variable_) return;
    ++count;
    last_variable_ = std::move(upper);
  });
  return count;
}

}  // namespace vorek
