#ifndef VOREK_APPS_VOREK_DESK_DESK_DOCUMENTS_H_
#define VOREK_APPS_VOREK_DESK_DESK_DOCUMENTS_H_

#include <memory>
#include <string>

#include "vorek/documents.h"

namespace vorek::desk {

// Finished workbooks lie in the user's documents; the user is told where, with buttons that open
// the file and its folder.
class DeskDocuments : public Documents {
 public:
  explicit DeskDocuments(std::shared_ptr<Documents> machine) : machine_(std::move(machine)) {}

  std::string NewPath(const std::string& file_name) override {
    return machine_->NewPath(file_name);
  }
  void Show(const std::string& path) override;

 private:
  std::shared_ptr<Documents> machine_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_DESK_DOCUMENTS_H_
