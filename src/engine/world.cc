#include "vorek/world.h"

#include <utility>

#include "engine/form_ask_user_report.h"
#include "engine/world_state.h"
#include "export/form_template.h"
#include "vorek/no_windows.h"

namespace vorek {
namespace {

Services ServicesFrom(WorldOptions options) {
  if (options.clock == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "A world needs a clock.");
  }
  if (options.windows == nullptr) options.windows = std::make_shared<NoWindows>();
  return {std::move(options.providers),
          std::move(options.windows),
          std::move(options.clock),
          std::move(options.files),
          std::move(options.function_file),
          std::move(options.settings),
          std::move(options.file_dialogs),
          std::move(options.components),
          std::move(options.print_jobs),
          std::move(options.spreadsheet),
          std::move(options.converter),
          std::move(options.documents),
          std::move(options.clipboard),
          std::move(options.temporary_files),
          std::move(options.attachments),
          std::move(options.access_file),
          options.limits};
}

}  // namespace

WorldState::WorldState(Services services) : process(std::move(services)), messages(process) {}

WorldState::WorldState(const WorldState& opener) : process(opener.process), messages(process) {
  process.main.ParameterValues = opener.process.main.ParameterValues;
}

WorldState::~WorldState() = default;

FormTemplate& WorldState::TemplateForm() {
  if (form_template_ == nullptr) form_template_ = std::make_unique<FormTemplate>(process, messages);
  return *form_template_;
}

World::World(WorldOptions options)
    : state_(std::make_unique<WorldState>(ServicesFrom(std::move(options)))) {}

World::~World() = default;

EvaluationOptions EvaluationOptionsOf(World& world) { return world.State().ForEvaluation(); }

void World::Cancel() noexcept { state_->process.data.Cancel(); }

}  // namespace vorek
