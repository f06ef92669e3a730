#include "messages/messages.h"

#include "messages/persian_reason.h"

namespace vorek {
namespace {

std::string AbsoluteText(std::int32_t number) {
  const std::int64_t wide = number;
  return std::to_string(wide < 0 ? -wide : wide);
}

}  // namespace

void Messages::ShowMessage(const std::string& title, const std::string& message) {
  const std::pair text(title, message);
  const auto told = told_.find(text);
  const bool again = told != told_.end();
  if (again && told->second == Told::kSilenced) return;
  if (form_message_ == nullptr) form_message_ = std::make_unique<FormMessage>(process_.windows());
  form_message_->OfferSilence(again);
  form_message_->SetCaption(title);
  form_message_->lblMessage.SetCaption(message);
  form_message_->ShowModal();
  if (runs_ == 0) return;
  told_[text] = form_message_->chkSilent.Value() != 0 ? Told::kSilenced : Told::kOnce;
}

std::string Messages::ReasonOf(const std::string& description) const {
  return PersianReason(description);
}

int Messages::ShowConfirm(const std::string& title, const std::string& question) {
  std::int32_t& answer = process_.main.ConfirmAnswer;
  if (form_confirm_ == nullptr) {
    form_confirm_ = std::make_unique<FormConfirm>(process_.windows(), answer);
  }
  answer = 0;  // the close box gives no answer
  form_confirm_->SetCaption(title);
  form_confirm_->lblQuestion.SetCaption(question);
  form_confirm_->ShowModal();
  return answer == 1 ? 1 : 2;
}

void Messages::DisplayError(std::int32_t errNO, const std::string& shortErrorDesc,
                            const std::string& longErrorDesc, const std::string&,
                            std::int32_t handled) {
  if (form_error_ == nullptr) form_error_ = std::make_unique<FormError>(process_.windows());
  form_error_->lblError.SetCaption(shortErrorDesc);
  form_error_->txtError.SetText(PersianReason(longErrorDesc));
  if (longErrorDesc.empty() && errNO != 0) {
    const std::string& last = process_.dten().cnn.LastError();
    if (!last.empty()) form_error_->txtError.SetText(PersianReason(last));
  }
  form_error_->SetCaption("اشکال شماره :  " + AbsoluteText(handled));
  form_error_->ShowModal();
}

}  // namespace vorek
