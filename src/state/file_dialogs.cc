#include "state/file_dialogs.h"

namespace vorek {
namespace {

// The folder that a dialog leaves as the current one: the chosen file's. A root keeps its slash, a
// bare name stands in the folder that is current already.
std::string FolderOf(const std::string& file_name) {
  const std::size_t slash = file_name.find_last_of("/\\");
  if (slash == std::string::npos) return ".";
  const bool root = slash == 0 || file_name[slash - 1] == ':';
  return file_name.substr(0, root ? slash + 1 : slash);
}

}  // namespace

bool SaveFileDialog(Process& process, std::string& file_name, const std::string& filter) {
  FileDialogs* const dialogs = process.services.file_dialogs.get();
  FileDialogRequest request{file_name, filter, "", ""};
  if (dialogs == nullptr || !dialogs->Save(request)) return false;
  file_name = request.file_name;
  return true;
}

bool OpenFileDialog(Process& process, Notices& notices, std::string& file_name,
                    const std::string& filter, const std::string& title,
                    const std::string& default_extension) {
  FileDialogs* const dialogs = process.services.file_dialogs.get();
  FileDialogRequest request{file_name, filter, title, default_extension};
  if (dialogs == nullptr || !dialogs->Open(request)) return false;
  if (process.services.files == nullptr || !process.services.files->Exists(request.file_name)) {
    notices.ShowMessage("اشکال", "در عمل باز کردن فايل مشکل پيش آمد.");
    return false;
  }
  file_name = request.file_name;
  process.main.DialogPath = FolderOf(file_name);
  if (process.services.settings != nullptr) {
    IgnoreErrors(
        [&] { process.services.settings->Save("Setting", "DialogPath", process.main.DialogPath); });
  }
  return true;
}

}  // namespace vorek
