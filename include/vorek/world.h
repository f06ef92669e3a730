#ifndef VOREK_WORLD_H_
#define VOREK_WORLD_H_

#include <memory>
#include <string>
#include <vector>

#include "vorek/database.h"

namespace vorek {

class AttachmentManager;
class Clipboard;
class AccessFile;
class Clock;
class Components;
class Documents;
class FileDialogs;
class Files;
class PrintJobs;
class Settings;
class Spreadsheet;
class TemporaryFiles;
class Windows;
class WorkbookConverter;
struct WorldState;

// What a world works with. Adapters make the parts: see sqlite.h, system.h.
struct WorldOptions {
  // The databases that a connection string can name; the first that answers is taken.
  std::vector<std::shared_ptr<DatabaseProvider>> providers;
  // The screen; null for none: a modal form then closes at once.
  std::shared_ptr<Windows> windows;
  // The time of day. REQUIRED.
  std::shared_ptr<Clock> clock;
  // The file system; null for none: what lies in files is then empty and isn't kept.
  std::shared_ptr<Files> files = {};
  // The user's settings; null for none: nothing is then kept.
  std::shared_ptr<Settings> settings = {};
  // The dialogs for choosing a file; null for none: each is then cancelled.
  std::shared_ptr<FileDialogs> file_dialogs = {};
  // The forms behind rows, see components.h; null for none: a form that is wanted isn't there.
  std::shared_ptr<Components> components = {};
  // Prints through stored templates, see print.h; null for none: such a print is refused.
  std::shared_ptr<PrintJobs> print_jobs = {};
  // The file that keeps the user functions of formulas; empty for none.
  std::string function_file = {};
  // What the exports work with; null for none, and what needs it is then refused with a message.
  std::shared_ptr<Spreadsheet> spreadsheet = {};      // see xlsx.h
  std::shared_ptr<WorkbookConverter> converter = {};  // of templates in the old format
  std::shared_ptr<Documents> documents = {};          // where workbooks go and what opens them
  std::shared_ptr<Clipboard> clipboard = {};
  std::shared_ptr<TemporaryFiles> temporary_files = {};  // for copies of stored templates
  std::shared_ptr<AttachmentManager> attachments = {};   // the host's, behind cmdMedia
  std::shared_ptr<AccessFile> access_file = {};          // see access.h
  // How much the query of a report may bring into memory.
  ResultLimits limits = {};
};

// The state that controls share: the connection, the user, the column layouts. The last View of any
// of them sets these for all, so a host makes a world for each user and connection and hands it to
// the controls of that user; it must outlive them. Two worlds know nothing of each other. To be
// used from one thread.
class World {
 public:
  // Throws Error(kInvalidCall) if a required part is missing.
  explicit World(WorldOptions options);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  // Stops the statement that runs now, from any thread; its run ends as a failed one.
  void Cancel() noexcept;

  WorldState& State() { return *state_; }

 private:
  std::unique_ptr<WorldState> state_;
};

}  // namespace vorek

#endif  // VOREK_WORLD_H_
