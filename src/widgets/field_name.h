#ifndef VOREK_WIDGETS_FIELD_NAME_H_
#define VOREK_WIDGETS_FIELD_NAME_H_

#include <string>

#include "widgets/basic_controls.h"

namespace vorek {

// The label beside the control that carries the same tag: they belong together. Null for none.
const Label* TiedLabel(const Control& control);

// What a person calls a field: what the label says that is tied to it, or the nearest one beside it
// on its line or above it, else the caption of what it stands in; "" if there is none of them.
std::string FieldName(const Control& field);

}  // namespace vorek

#endif  // VOREK_WIDGETS_FIELD_NAME_H_
