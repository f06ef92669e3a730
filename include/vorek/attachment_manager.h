#ifndef VOREK_ATTACHMENT_MANAGER_H_
#define VOREK_ATTACHMENT_MANAGER_H_

#include <cstdint>
#include <string>

namespace vorek {

// The host's component that keeps the files attached to a form, in the rows of
// tblVorekFormAttachment. It is told what to work on in the order of these members and then shown.
class AttachmentManager {
 public:
  virtual ~AttachmentManager() = default;

  virtual void SetConnectionString(const std::string& text) = 0;
  virtual void SetOleConnectionString(const std::string& text) = 0;  // the same text
  virtual void SetUserID(std::int32_t id) = 0;
  virtual void SetFormID(std::int32_t id) = 0;
  virtual void SetFormTypeID(std::int32_t id) = 0;
  // Returns when the user has done with it.
  virtual void Show() = 0;
};

}  // namespace vorek

#endif  // VOREK_ATTACHMENT_MANAGER_H_
