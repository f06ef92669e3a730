#ifndef VOREK_APPS_VOREK_DRIVE_PROMPT_H_
#define VOREK_APPS_VOREK_DRIVE_PROMPT_H_

#include "drive/driver.h"

namespace vorek::drive {

// Reads lines at a terminal with a history and completion by Tab until the end of input. A line
// that fails is told on standard error, and the next one is read.
void RunPrompt(Driver& driver);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_PROMPT_H_
