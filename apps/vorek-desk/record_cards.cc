#include "record_cards.h"

#include <utility>

#include "messages/persian_reason.h"
#include "platform/attempt.h"

namespace vorek::desk {
namespace {

constexpr const char* kFormRunner = "comScreenMill.comScreenRun";

// The runner shows any form of the metadata by its number.
class FormRunner : public Component {
 public:
  FormRunner(RecordCards& cards, std::int32_t form_type) : cards_(cards), form_type_(form_type) {}

  // The card is read as the user of its tab, over that connection.
  void Set(const std::string&, const ComponentValue&) override {}
  void Call(const std::string& method, const std::vector<ComponentValue>& arguments) override {
    if (method == "ClearShow") cards_.Show(form_type_, "");
    if (method == "View") cards_.ShowByKey(form_type_, std::get<std::string>(arguments.at(0)));
  }

 private:
  RecordCards& cards_;
  std::int32_t form_type_;
};

}  // namespace

std::shared_ptr<Components> RecordCards::MakeComponents(
    const std::string& folder, std::function<void(const std::string&)> tell) {
  auto factories = std::make_shared<ComponentFactories>();
  factories->Add(kFormRunner, [this](std::int32_t form_type) {
    return std::make_unique<FormRunner>(*this, form_type);
  });
  if (!folder.empty()) factories->SetNext(ComponentsInFolder(folder, std::move(tell)));
  return factories;
}

void RecordCards::Show(std::int32_t form_type, const std::string& condition) {
  if (world_ == nullptr) return;
  const std::optional<Error> error = Attempt([&] {
    const std::optional<Record> record = ReadRecord(world_->process, form_type, condition);
    if (!record) {
      throw Error(ErrorNumber::kItemNotFound, "ركورد اين سطر يافت نشد: " + condition);
    }
    std::erase_if(cards_, [](const auto& card) { return !card->Loaded(); });
    cards_.push_back(std::make_unique<RecordForm>(world_->process, form_type, *record));
    cards_.back()->Show();
  });
  if (error) world_->messages.ShowMessage("خطا", PersianReason(error->Description()));
}

void RecordCards::ShowByKey(std::int32_t form_type, const std::string& key) {
  if (world_ == nullptr) return;
  std::string condition;
  const std::optional<Error> error =
      Attempt([&] { condition = ConditionOfKey(world_->process, form_type, key); });
  if (error) {
    world_->messages.ShowMessage("خطا", PersianReason(error->Description()));
  } else {
    Show(form_type, condition);
  }
}

}  // namespace vorek::desk
