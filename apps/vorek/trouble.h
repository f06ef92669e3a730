#ifndef VOREK_APPS_VOREK_TROUBLE_H_
#define VOREK_APPS_VOREK_TROUBLE_H_

#include <iostream>

#include "command.h"
#include "vorek/error.h"

namespace vorek {

// Exit codes of the commands that a team's own tests call: what they look for was found, or they
// couldn't look.
inline constexpr int kFoundDifferences = 1;
inline constexpr int kTrouble = 3;

// Does the work; a failure of it is told, and ends the command with kTrouble. An interrupt is
// passed on.
template <typename Work>
void TellTrouble(const Work& work) {
  try {
    work();
  } catch (const Error& error) {
    if (error.Is(ErrorNumber::kCancelled)) throw;
    std::cerr << "vorek: " << error.Description() << '\n';
    throw CLI::RuntimeError(kTrouble);
  }
}

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_TROUBLE_H_
