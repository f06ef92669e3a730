#ifndef VOREK_FILE_DIALOGS_H_
#define VOREK_FILE_DIALOGS_H_

#include <string>

namespace vorek {

// What a file dialog begins with.
struct FileDialogRequest {
  std::string file_name;
  std::string filter;  // "Texts|*.txt|All|*.*": pairs of a description and its patterns
  std::string title;
  std::string default_extension;
};

// The system's dialogs for choosing a file.
class FileDialogs {
 public:
  virtual ~FileDialogs() = default;

  // Modal. True if a name was chosen, which then stands in request.file_name; false on cancel.
  virtual bool Save(FileDialogRequest& request) = 0;
  virtual bool Open(FileDialogRequest& request) = 0;
};

}  // namespace vorek

#endif  // VOREK_FILE_DIALOGS_H_
