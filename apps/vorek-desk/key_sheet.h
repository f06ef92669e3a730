#ifndef VOREK_APPS_VOREK_DESK_KEY_SHEET_H_
#define VOREK_APPS_VOREK_DESK_KEY_SHEET_H_

#include <QDialog>

namespace vorek::desk {

// The sheet of every key that the windows know, with what it does.
class KeySheet : public QDialog {
 public:
  explicit KeySheet(QWidget* parent);
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_KEY_SHEET_H_
