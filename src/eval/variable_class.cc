#include "state/notices.h"
#include "vorek/evaluation.h"

namespace vorek {

void VariableClass::Predeterminado(const DynamicValue& predeterminado) {
  if (predeterminado_.IsNull()) {
    predeterminado_ = predeterminado;
  } else if (notices_ != nullptr) {
    notices_->ShowMessage("اشكال", "El valor predeterminado ya fue asignado");
  }
}

}  // namespace vorek
