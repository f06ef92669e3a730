#ifndef VOREK_TESTS_FAULTS_OPERATIONS_H_
#define VOREK_TESTS_FAULTS_OPERATIONS_H_

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "faults/stage.h"

namespace vorek {

// Something that a host or a user does, and what is left behind by it.
struct Operation {
  std::string name;
  std::function<void(Stage&)> begin;  // once, before all runs
  std::function<void(Stage&)> reset;  // before each run: where it starts from
  std::function<void(Stage&)> run;    // once; throws Error or has something told when it fails
  std::function<std::string(Stage&)> left;  // by a run that went through
  // A failure of the database or of a file ends it without a word, by its contract.
  bool silent = false;
  // The run behind a failed one goes on where that left off; its own start would take it away.
  bool goes_on = false;
  // A slow one gets one in so many of the faults that others get.
  std::size_t share = 1;
};

std::vector<Operation> Operations();

// Failures tell an operation by its name.
inline void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

}  // namespace vorek

#endif  // VOREK_TESTS_FAULTS_OPERATIONS_H_
