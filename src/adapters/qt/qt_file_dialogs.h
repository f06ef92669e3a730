#ifndef VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_
#define VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_

#include <memory>
#include <utility>

#include "adapters/qt/busy_screen.h"
#include "vorek/file_dialogs.h"

namespace vorek::qt {

// The dialogs of the desktop, or Qt's own where it has none.
class QtFileDialogs : public FileDialogs {
 public:
  // screen is that of the world that asks.
  explicit QtFileDialogs(std::shared_ptr<BusyScreen> screen = std::make_shared<BusyScreen>())
      : screen_(std::move(screen)) {}

  bool Save(FileDialogRequest& request) override;
  bool Open(FileDialogRequest& request) override;

 private:
  std::shared_ptr<BusyScreen> screen_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_QT_FILE_DIALOGS_H_
