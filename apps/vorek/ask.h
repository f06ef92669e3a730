#ifndef VOREK_APPS_VOREK_ASK_H_
#define VOREK_APPS_VOREK_ASK_H_

#include <istream>
#include <ostream>

#include "parameters/vorek_parameters.h"

namespace vorek {

// Asks at a terminal for each visible parameter of the form, with its label, kind, choices and
// default, and confirms. An answer that a widget refuses is asked for again, and so is a form that
// isn't accepted. False at the end of input: nothing is confirmed then.
bool AskParameters(VorekParameters& panel, std::istream& in, std::ostream& out);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_ASK_H_
