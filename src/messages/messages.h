#ifndef VOREK_MESSAGES_MESSAGES_H_
#define VOREK_MESSAGES_MESSAGES_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

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

  // The run of a report while it lives. A message that comes again in it may be silenced by its
  // user, until the outermost run ends.
  class Run {
   public:
    explicit Run(Messages& messages) : messages_(messages) { ++messages_.runs_; }
    ~Run() {
      if (--messages_.runs_ == 0) messages_.told_.clear();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    Messages& messages_;
  };

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
  enum class Told { kOnce, kSilenced };

  Process& process_;
  int runs_ = 0;
  std::map<std::pair<std::string, std::string>, Told> told_;  // by title and text, in this run
  std::unique_ptr<FormMessage> form_message_;
  std::unique_ptr<FormConfirm> form_confirm_;
  std::unique_ptr<FormError> form_error_;
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_MESSAGES_H_
