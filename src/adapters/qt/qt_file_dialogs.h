#ifndef VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_
#define VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_

#include "platform/file_dialogs.h"

namespace vorek::qt {

// The dialogs of the desktop, or Qt's own where it has none.
class QtFileDialogs : public FileDialogs {
 public:
  bool Save(FileDialogRequest& request) override;
  bool Open(FileDialogRequest& request) override;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_
