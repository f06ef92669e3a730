#ifndef VOREK_STATE_NOTICES_H_
#define VOREK_STATE_NOTICES_H_

#include <string>

namespace vorek {

// The modal messages, for code on floors below messages/, which implements them.
class Notices {
 public:
  virtual ~Notices() = default;

  // A fact with one button; returns when the user has closed it.
  virtual void ShowMessage(const std::string& title, const std::string& message) = 0;

  // An error's description in the user's words.
  virtual std::string ReasonOf(const std::string& description) const { return description; }

  // A question; 1 for yes, 2 for no or closed.
  virtual int ShowConfirm(const std::string& title, const std::string& question) = 0;
};

}  // namespace vorek

#endif  // VOREK_STATE_NOTICES_H_
