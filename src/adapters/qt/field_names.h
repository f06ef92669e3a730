#ifndef VOREK_ADAPTERS_QT_FIELD_NAMES_H_
#define VOREK_ADAPTERS_QT_FIELD_NAMES_H_

#include <string>

#include "widgets/control.h"

namespace vorek::qt {

// What a screen reader calls a field that no label is tied to: the nearest label beside it on its
// line or above it, else the caption of what it stands in; "" if there is neither.
std::string NameByPlace(const Control& field);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_FIELD_NAMES_H_
