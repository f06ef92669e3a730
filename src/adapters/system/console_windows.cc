#include "adapters/system/console_windows.h"

#include <iostream>

#include "adapters/system/system_clock.h"
#include "vorek/system.h"

namespace vorek {

void ConsoleWindows::ShowModal(Form& form) {
  out_ << form.Caption() << ": " << form.MainText() << '\n';
  if (!form.DetailText().empty()) out_ << form.DetailText() << '\n';
  out_.flush();
  form.CloseBox();
}

std::shared_ptr<Clock> MachineClock() { return std::make_shared<SystemClock>(); }

std::shared_ptr<Windows> WindowsOnStream(std::ostream& out) {
  return std::make_shared<ConsoleWindows>(out);
}

void AddSystemServices(WorldOptions& options) {
  if (options.clock == nullptr) options.clock = MachineClock();
  if (options.files == nullptr) options.files = MachineFiles();
  if (options.settings == nullptr) options.settings = MachineSettings();
  if (options.documents == nullptr) options.documents = MachineDocuments();
  if (options.temporary_files == nullptr) options.temporary_files = MachineTemporaryFiles();
  if (options.converter == nullptr) options.converter = MachineWorkbookConverter();
  options.function_file = MachineFunctionFile(options.function_file);
  if (options.windows == nullptr) options.windows = WindowsOnStream(std::cerr);
}

}  // namespace vorek
