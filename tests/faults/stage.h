#ifndef VOREK_TESTS_FAULTS_STAGE_H_
#define VOREK_TESTS_FAULTS_STAGE_H_

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/system/file_settings.h"
#include "engine/report_control.h"
#include "faults/faulty_database.h"
#include "faults/faulty_files.h"
#include "print/print_output.h"
#include "vorek/clipboard.h"
#include "vorek/documents.h"
#include "vorek/file_dialogs.h"
#include "vorek/no_windows.h"
#include "vorek/report.h"
#include "vorek/temporary_files.h"
#include "vorek/world.h"
#include "widgets/form.h"

namespace vorek {

// A screen that notes what is told and whose user answers a dialog as a test wants it.
class NotedWindows : public NoWindows {
 public:
  using Answer = std::function<void(Form&)>;
  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  // For each showing of the form of this name.
  void Answers(const std::string& form, Answer answer) { answers_[form] = std::move(answer); }

  std::vector<std::string> told;  // message forms: name, caption, text

 private:
  std::map<std::string, Answer> answers_;
};

// A world over a copy of the sample, with every port that a host gives it, in a folder of its own.
class Stage {
 public:
  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  ReportControl& Control() { return report->Impl(); }
  WorldState& State() { return world->State(); }
  // A new world and a control in it, connected as this user.
  void Begin(std::int16_t user = 1, std::int16_t position = 1);
  // A connection as a host's own program has it.
  std::unique_ptr<DatabaseConnection> Connect();
  // By a connection of the test's own, without faults.
  ResultSetPtr Query(const std::string& text);
  // What both grids and the panel show, cell by cell.
  std::string Shown();
  // All files in the folder, by name, but those of the database and temporary ones.
  std::map<std::string, std::string> Files() const;

  std::shared_ptr<NotedWindows> windows = std::make_shared<NotedWindows>();
  std::shared_ptr<FaultyFiles> files = std::make_shared<FaultyFiles>();
  std::shared_ptr<FaultyDatabase> database;
  std::shared_ptr<FileSettings> settings;
  std::string next_file;  // what a dialog for a file chooses
  std::string pages;      // what was printed
  std::unique_ptr<DatabaseConnection> connection;
  std::unique_ptr<World> world;
  std::unique_ptr<VorekReport1> report;

 private:
  WorldOptions Options();

  std::filesystem::path folder_;
  std::unique_ptr<DatabaseConnection> own_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_FAULTS_STAGE_H_
