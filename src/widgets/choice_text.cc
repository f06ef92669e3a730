#include "widgets/choice_text.h"

#include <algorithm>

#include "widgets/vorek_entity_picker.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"

namespace vorek {
namespace {

std::string ChosenText(const VorekMultiSelect& many) {
  if (many.AllSelected()) return "همه";
  if (many.NoneSelected()) return {};
  const std::string ids = many.SelectedIDs();
  return std::to_string(std::count(ids.begin(), ids.end(), ',') + 1) + " مورد";
}

}  // namespace

std::string ChoiceText(const ListControl& list) {
  if (const auto* const choice = dynamic_cast<const ChoiceControl*>(&list)) {
    return choice->Description();
  }
  if (const auto* const many = dynamic_cast<const VorekMultiSelect*>(&list)) {
    return ChosenText(*many);
  }
  const auto* const entity = dynamic_cast<const VorekEntityPicker*>(&list);
  if (entity == nullptr || entity->IsNull()) return {};
  return std::to_string(entity->FormTypeID()) + ":" + std::to_string(entity->FormID());
}

}  // namespace vorek
