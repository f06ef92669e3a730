#ifndef VOREK_STATE_PROCESS_H_
#define VOREK_STATE_PROCESS_H_

#include <memory>
#include <string>
#include <utility>

#include "catalog/data_session.h"
#include "platform/access_file.h"
#include "platform/attachment_manager.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/documents.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/pass_watch.h"
#include "platform/print_job.h"
#include "platform/settings.h"
#include "platform/spreadsheet.h"
#include "platform/temporary_files.h"
#include "platform/windows.h"
#include "platform/workbook_converter.h"
#include "state/main_module.h"
#include "vorek/components.h"

namespace vorek {

// The parts of the world outside that the system works with.
struct Services {
  ProviderList providers;
  std::shared_ptr<Windows> windows;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<Files> files = {};               // null for none
  std::string function_file = {};                  // of the formulas; empty for none
  std::shared_ptr<Settings> settings = {};         // null for none
  std::shared_ptr<FileDialogs> file_dialogs = {};  // null for none
  std::shared_ptr<Components> components = {};     // of forms; null for none
  std::shared_ptr<PrintJobs> print_jobs = {};      // through templates; null for none
  // Of the exports; null for none of each.
  std::shared_ptr<Spreadsheet> spreadsheet = {};
  std::shared_ptr<WorkbookConverter> converter = {};
  std::shared_ptr<Documents> documents = {};
  std::shared_ptr<Clipboard> clipboard = {};
  std::shared_ptr<TemporaryFiles> temporary_files = {};
  std::shared_ptr<AttachmentManager> attachments = {};
  std::shared_ptr<AccessFile> access_file = {};
};

// The process-wide state: made once by a host and handed to its controls. Two of them are two
// worlds that know nothing of each other.
struct Process {
  explicit Process(Services with)
      : services(std::move(with)), data(services.providers), watch(*services.windows) {
    data.SetWatch(&watch);
  }
  // A process for a window of its own: the same parts of the world outside, nothing else shared but
  // what a cancel stops.
  explicit Process(const Process& opener)
      : services(opener.services), data(opener.data.Sibling()), watch(*services.windows) {
    data.SetWatch(&watch);
  }

  DtEn& dten() { return data.Get(); }
  Windows& windows() { return *services.windows; }
  Clock& clock() { return *services.clock; }

  Services services;
  DataSession data;
  MainModule main;
  PassWatch watch;  // of all long passes: they follow each other on the one thread
};

}  // namespace vorek

#endif  // VOREK_STATE_PROCESS_H_
