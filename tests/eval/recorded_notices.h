#ifndef VOREK_TESTS_EVAL_RECORDED_NOTICES_H_
#define VOREK_TESTS_EVAL_RECORDED_NOTICES_H_

#include <string>
#include <vector>

#include "state/notices.h"

namespace vorek {

// Keeps each message as "title|message".
class RecordedNotices : public Notices {
 public:
  void ShowMessage(const std::string& title, const std::string& message) override {
    messages.push_back(title + "|" + message);
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }

  std::vector<std::string> messages;
};

}  // namespace vorek

#endif  // VOREK_TESTS_EVAL_RECORDED_NOTICES_H_
