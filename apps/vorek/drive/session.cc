#include "drive/session.h"

#include <utility>

#include "command.h"
#include "drive/evaluation_object.h"
#include "drive/script_print.h"
#include "engine/report_control.h"
#include "printable.h"
#include "text/utf8.h"
#include "vorek/system.h"

namespace vorek::drive {

Session::Session(std::ostream& out, const std::function<void(const Block&)>& play)
    : out_(out),
      clock(std::make_shared<ScriptClock>(MachineClock())),
      stage(std::make_shared<Stage>(print_, play)) {
  MakeWorld();
  report_ = std::make_unique<VorekReport1>(*world_);
  objects_["evaluation"] = EvaluationObject(report_->Impl().Evaluation);
  ListenToEvents(*report_, [this](const std::string& event) { events_.push_back(event); });
}

void Session::MakeWorld() {
  WorldOptions options = ConsoleWorld();
  options.clock = clock;
  options.windows = stage;
  options.file_dialogs = files;
  options.documents = documents;
  options.clipboard = clipboard;
  options.components = components;
  options.print_jobs = std::make_shared<ScriptPrints>(print_);
  world_ = std::make_unique<World>(std::move(options));
}

void Session::Print(const std::string& line) {
  last_line_ = line;
  out_ << PrintableLines(line) << '\n';
}

std::vector<std::string> Session::TakeEvents() { return std::exchange(events_, {}); }

Object* Session::FindObject(const std::string& name) const {
  const auto found = objects_.find(text::ToLower(name));
  return found == objects_.end() ? nullptr : found->second.get();
}

}  // namespace vorek::drive
