#ifndef VOREK_APPS_VOREK_DRIVE_SESSION_H_
#define VOREK_APPS_VOREK_DRIVE_SESSION_H_

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "drive/members.h"
#include "drive/stage.h"
#include "vorek/components.h"
#include "vorek/report.h"
#include "vorek/world.h"

namespace vorek::drive {

// What the lines of a script work on: the one control, and the parts that its world meets outside.
class Session {
 public:
  // What is printed goes to `out`; `play` runs the lines that are queued for a form.
  Session(std::ostream& out, const std::function<void(const Block&)>& play);

  void Print(const std::string& line);
  const std::string& LastLine() const { return last_line_; }
  VorekReport1& Report() { return *report_; }
  // The control's events since they were last taken, a line each.
  std::vector<std::string> TakeEvents();
  // What a script reaches by name beside the controls; null for none.
  Object* FindObject(const std::string& name) const;

 private:
  void MakeWorld();

  std::ostream& out_;
  std::string last_line_;
  std::vector<std::string> events_;
  std::function<void(const std::string&)> print_ = [this](const std::string& line) { Print(line); };

 public:
  const std::shared_ptr<ScriptClock> clock;
  const std::shared_ptr<Stage> stage;
  const std::shared_ptr<FileStage> files = std::make_shared<FileStage>(print_);
  const std::shared_ptr<DocumentStage> documents = std::make_shared<DocumentStage>(print_);
  const std::shared_ptr<ClipboardStage> clipboard = std::make_shared<ClipboardStage>();
  const std::shared_ptr<ComponentFactories> components = std::make_shared<ComponentFactories>();

 private:
  std::unique_ptr<World> world_;
  std::unique_ptr<VorekReport1> report_;
  std::map<std::string, std::unique_ptr<Object>> objects_;  // by name in small letters
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_SESSION_H_
