#ifndef VOREK_APPS_VOREK_DRIVE_DRIVER_H_
#define VOREK_APPS_VOREK_DRIVE_DRIVER_H_

#include <istream>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "drive/members.h"
#include "drive/stage.h"
#include "drive/words.h"
#include "grid/grid.h"
#include "vorek/components.h"
#include "vorek/error.h"
#include "vorek/report.h"

namespace vorek::drive {

// Drives one control by the lines of a script; docs/drive.md describes the language.
class Driver {
 public:
  // What the commands print goes to `out`.
  explicit Driver(std::ostream& out);

  // Runs a script to its end or to the first line that fails. Throws Error with the line's number
  // and the reason.
  void Run(std::istream& script);

  // One line by itself, as an interactive user gives it. Throws Error with the reason.
  void RunLine(const std::string& line);

  // All words that may stand at the end of this head of a line, for completion.
  std::vector<std::string> Completions(const std::string& head, const std::string& word);

 private:
  using Words = std::vector<std::string>;
  using Command = void (Driver::*)(const Words&);
  static const std::map<std::string, Command>& Commands();

  void Play(const Block& block);
  void PlayLine(const ScriptLine& line);
  std::size_t ReadWhen(const Block& block, std::size_t at);
  void Execute(const Words& words);
  void Print(const std::string& line);
  void RaiseFailure();

  Form* FormOf(const std::string& head) const;
  Control& FindControl(const std::string& path);
  Control* FindIn(Control& root, const std::string& path);
  Grid& FindGrid(const Words& words);
  Object* FindObject(const std::string& path);
  void PressKey(Control& control, int code, int shift);
  void DumpNames(const Control& control, const std::string& indent);
  void DumpGrid(const Grid& grid);
  void DumpMenu(const Menu& menu, const std::string& indent);
  void PressOnGrid(Grid& grid, const Words& words);

  void Connect(const Words& words);
  void View(const Words& words);
  void Refresh(const Words& words);
  void Call(const Words& words);
  void Get(const Words& words);
  void Set(const Words& words);
  void Click(const Words& words);
  void DblClick(const Words& words);
  void Key(const Words& words);
  void Type(const Words& words);
  void Move(const Words& words);
  void Select(const Words& words);
  void ChooseMenu(const Words& words);
  void Dump(const Words& words);
  void Format(const Words& words);
  void Events(const Words& words);
  void Expect(const Words& words);
  void SetClock(const Words& words);
  void QueueFile(const Words& words);
  void QueueWorkbook(const Words& words);
  void PrintClipboard(const Words& words);
  void PrintPages(const Words& words);
  void OfferComponent(const Words& words);
  void CancelAt(const Words& words);
  void CloseForm(const Words& words);
  void PrintChart(const Words& words);
  void PrintHead(const Words& words);

  std::ostream& out_;
  std::string last_line_;
  std::vector<std::string> events_;
  std::shared_ptr<ScriptClock> clock_;
  std::shared_ptr<Stage> stage_;
  std::shared_ptr<FileStage> files_;
  std::shared_ptr<DocumentStage> documents_;
  std::shared_ptr<ClipboardStage> clipboard_ = std::make_shared<ClipboardStage>();
  std::shared_ptr<ComponentFactories> components_ = std::make_shared<ComponentFactories>();
  std::unique_ptr<World> world_;
  std::unique_ptr<VorekReport1> report_;
  std::map<std::string, std::unique_ptr<Object>> objects_;  // by name in small letters
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_DRIVER_H_
