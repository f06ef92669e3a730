#ifndef VOREK_APPS_VOREK_DESK_ATTACHMENT_DIALOG_H_
#define VOREK_APPS_VOREK_DESK_ATTACHMENT_DIALOG_H_

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "vorek/attachment_manager.h"
#include "vorek/database.h"

class QTableWidget;
class QPushButton;

namespace vorek::desk {

// The files attached to a form, in a window: a list, adding one from a file, saving one as a file,
// deleting one.
class AttachmentDialog : public QDialog {
 public:
  // The connection must outlive the dialog.
  AttachmentDialog(DatabaseConnection& connection, std::int32_t form_type_id, std::int32_t form_id,
                   QWidget* parent);

  // Takes a file in. False, and the user is told, if it can't be read or stored.
  bool Add(const QString& path);
  // Writes the bytes of the row on which the list stands.
  bool SaveAs(const QString& path);
  void DeleteChosen();

 private:
  void MakeButtons();
  void Reload();
  std::string Where() const;
  int ChosenNumber() const;  // -1 for none
  ResultSetPtr Run(const std::string& text) const;
  template <typename Work>
  bool Try(const Work& work);

  DatabaseConnection& connection_;
  std::int32_t form_type_id_;
  std::int32_t form_id_;
  QTableWidget* list_;
  QPushButton* save_ = nullptr;
  QPushButton* delete_ = nullptr;
};

// Opens the dialog for what the template form hands over.
class DeskAttachments : public AttachmentManager {
 public:
  explicit DeskAttachments(std::vector<std::shared_ptr<DatabaseProvider>> providers)
      : providers_(std::move(providers)) {}

  void SetConnectionString(const std::string& text) override { connection_ = text; }
  void SetOleConnectionString(const std::string& text) override { connection_ = text; }
  void SetUserID(std::int32_t id) override { user_id_ = id; }
  void SetFormID(std::int32_t id) override { form_id_ = id; }
  void SetFormTypeID(std::int32_t id) override { form_type_id_ = id; }
  void Show() override;

 private:
  std::vector<std::shared_ptr<DatabaseProvider>> providers_;
  std::string connection_;
  std::int32_t user_id_ = -1;
  std::int32_t form_id_ = -1;
  std::int32_t form_type_id_ = -1;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_ATTACHMENT_DIALOG_H_
