#ifndef VOREK_ENGINE_PROPERTY_BAG_H_
#define VOREK_ENGINE_PROPERTY_BAG_H_

#include "engine/report_control.h"
#include "vorek/property_store.h"

// The stored properties of a control.
namespace vorek {

// The defaults of a new control that has no stored state.
void InitProperties(ReportControl& control);

// Takes the properties from a host's store. Throws Error(kTypeMismatch or kOverflow), naming the
// key, for a value that the property can't hold, and SetConnection's error for a connection string
// that is refused; the others are then as they were or as stored.
void ReadProperties(ReportControl& control, PropertyStore& store);

// Passwords are written only for a connection string with "Persist Security Info=True".
void WriteProperties(ReportControl& control, PropertyStore& store);

}  // namespace vorek

#endif  // VOREK_ENGINE_PROPERTY_BAG_H_
