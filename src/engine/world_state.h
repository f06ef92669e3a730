#ifndef VOREK_ENGINE_WORLD_STATE_H_
#define VOREK_ENGINE_WORLD_STATE_H_

#include "messages/messages.h"
#include "state/process.h"
#include "vorek/evaluation.h"

namespace vorek {

// What stands behind a World: the process-wide state and the forms that all controls share.
struct WorldState {
  explicit WorldState(Services services) : process(std::move(services)), messages(process) {}

  EvaluationOptions ForEvaluation() {
    return {process.services.function_file, process.services.files.get(), &messages};
  }

  Process process;
  Messages messages;
};

}  // namespace vorek

#endif  // VOREK_ENGINE_WORLD_STATE_H_
