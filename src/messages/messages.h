#ifndef VOREK_MESSAGES_MESSAGES_H_
#define VOREK_MESSAGES_MESSAGES_H_

#include <cstdint>
#include <memory>
#include <string>

#include "messages/form_confirm.h"
#include "messages/form_error.h"
#include "messages/form_message.h"
#include "state/notices.h"
#include "state/process.h"

namespace vorek {

// Everything that reaches the user goes through three modal forms, made when first used.
class Messages : public Notices {
 public:
  explicit Messages(Process& process) : process_(process) {}

  void ShowMessage(const std::string& title, const std::string& message) override;
  std::string ReasonOf(const std::string& description) const override;
  // 1 for yes, else 2.
  int ShowConfirm(const std::string& title, const std::string& question) override;

  // A failure of a report: the short text, and behind a button the long one. Without a long text
  // and with a number, the detail is the last error of the connection. handled is the number of the
  // error being handled, which stands in the caption; captionText doesn't reach the screen.
  void DisplayError(std::int32_t errNO, const std::string& shortErrorDesc,
                    const std::string& longErrorDesc, const std::string& captionText,
                    std::int32_t handled);

 private:
  Process& process_;
  std::unique_ptr<FormMessage> form_message_;
  std::unique_ptr<FormConfirm> form_confirm_;
  std::unique_ptr<FormError> form_error_;
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_MESSAGES_H_
