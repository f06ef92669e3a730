#ifndef VOREK_ENGINE_WORLD_STATE_H_
#define VOREK_ENGINE_WORLD_STATE_H_

#include <memory>

#include "messages/messages.h"
#include "state/process.h"
#include "vorek/evaluation.h"

namespace vorek {

class FormAskUserReport;
class FormTemplate;

// What stands behind a World: the process-wide state and the forms that all controls share.
struct WorldState {
  explicit WorldState(Services services);
  // A world for a report in a window of its own, so that neither the layouts nor the filter of one
  // report reach the other. The answers of the last parameter form go with it.
  explicit WorldState(const WorldState& opener);
  ~WorldState();

  EvaluationOptions ForEvaluation() {
    return {process.services.function_file, process.services.files.get(), &messages};
  }

  // The one form in which templates are chosen: it remembers the places chosen last.
  FormTemplate& TemplateForm();

  Process process;
  Messages messages;
  std::unique_ptr<FormAskUserReport> form_ask_user_report;  // the last one; null for none

 private:
  std::unique_ptr<FormTemplate> form_template_;  // made when it is first asked for
};

}  // namespace vorek

#endif  // VOREK_ENGINE_WORLD_STATE_H_
