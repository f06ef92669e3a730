#ifndef VOREK_APPS_VOREK_DESK_RECORD_CARDS_H_
#define VOREK_APPS_VOREK_DESK_RECORD_CARDS_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "record_form.h"
#include "vorek/components.h"

namespace vorek::desk {

// The cards that a tab shows: what a host does with the records that its reports lead to.
class RecordCards {
 public:
  // The components of a tab: the form runner, which shows a card, and behind it the libraries in a
  // folder, "" for none. tell gets the reason for which a library can't be used.
  std::shared_ptr<Components> MakeComponents(const std::string& folder,
                                             std::function<void(const std::string&)> tell);

  // Cards are read on the connection of this process. It must outlive them; null before a tab is
  // complete.
  void SetProcess(WorldState* world) { world_ = world; }

  // InvokeView and InvokeClearShow: the card of a record, an empty one. What can't be shown is
  // told.
  void Show(std::int32_t form_type, const std::string& condition);
  void ShowByKey(std::int32_t form_type, const std::string& key);
  // The card that was opened last; null for none.
  RecordForm* Newest() const { return cards_.empty() ? nullptr : cards_.back().get(); }

 private:
  WorldState* world_ = nullptr;
  std::vector<std::unique_ptr<RecordForm>> cards_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_RECORD_CARDS_H_
