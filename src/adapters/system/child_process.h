#ifndef VOREK_ADAPTERS_SYSTEM_CHILD_PROCESS_H_
#define VOREK_ADAPTERS_SYSTEM_CHILD_PROCESS_H_

#include <chrono>
#include <string>
#include <vector>

#include "vorek/pass_watch.h"

namespace vorek {

// The path of a program that the user could call by that name; empty if there is none.
std::string FindProgram(const std::string& name);

// Runs a program, silent, in a process group of its own and waits for it. True if it ended by
// itself with code 0; when the time is over, or the question throws, it is killed with all that it
// started.
bool RunChild(const std::vector<std::string>& arguments, std::chrono::milliseconds limit,
              const Question& question);

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_CHILD_PROCESS_H_
