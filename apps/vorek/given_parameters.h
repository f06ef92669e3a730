#ifndef VOREK_APPS_VOREK_GIVEN_PARAMETERS_H_
#define VOREK_APPS_VOREK_GIVEN_PARAMETERS_H_

#include <cstdint>
#include <string>

#include "state/process.h"

namespace vorek {

// A run passes over what it doesn't know in a parameter string and takes the parameter for open, so
// that a slip would show all rows. Throws Error(kInvalidCall) for a part that isn't "@1=value" with
// a parameter of the report, for one that comes twice, and what the database throws. An empty text
// and a report that isn't there pass.
void CheckGivenParameters(Process& process, std::int32_t report, const std::string& text);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_GIVEN_PARAMETERS_H_
