#ifndef VOREK_STATE_PROCESS_H_
#define VOREK_STATE_PROCESS_H_

#include <memory>
#include <string>
#include <utility>

#include "catalog/data_session.h"
#include "state/main_module.h"
#include "vorek/access_file.h"
#include "vorek/attachment_manager.h"
#include "vorek/clipboard.h"
#include "vorek/clock.h"
#include "vorek/components.h"
#include "vorek/documents.h"
#include "vorek/file_dialogs.h"
#include "vorek/files.h"
#include "vorek/pass_watch.h"
#include "vorek/print_job.h"
#include "vorek/settings.h"
#include "vorek/spreadsheet.h"
#include "vorek/temporary_files.h"
#include "vorek/windows.h"
#include "vorek/workbook_converter.h"

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
  ResultLimits limits = {};  // of each query
};

// The process-wide state: made once by a host and handed to its controls. Two of them are two
// worlds that know nothing of each other.
struct Process {
  explicit Process(Services with)
      : services(std::move(with)),
        data(services.providers, services.limits),
        watch(*services.windows) {
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
