#include "widgets/vorek_selector.h"

#include <utility>

#include "widgets/property.h"

namespace vorek {

using property::ReadOnly;
using property::ReadWrite;

void ChoiceControl::Choose(std::int32_t index) {
  if (Enabled()) Take(At(index));
}

void ChoiceControl::SetID(std::int32_t id) { Take(Lookup(id)); }

void ChoiceControl::Take(std::optional<ListRow> row) {
  const std::int32_t before = ID();
  const bool was_null = IsNull();
  DropRefusal();
  chosen_ = std::move(row);
  if (before == ID() && was_null == IsNull()) return;
  Changed("ID");
  if (on_change) on_change();
}

const PropertyTable& ChoiceControl::OwnProperties() const {
  static const PropertyTable table =
      property::Join({ReadWrite("ID", &ChoiceControl::ID, &ChoiceControl::SetID),
                      ReadOnly("Description", &ChoiceControl::Description),
                      ReadOnly("IsNull", &ChoiceControl::IsNull)},
                     ListControl::OwnProperties());
  return table;
}

void VorekSelector::Type(const std::string& text) {
  if (allow_change_) ChoiceControl::Type(text);
}

void VorekSelector::Choose(std::int32_t index) {
  if (allow_change_) ChoiceControl::Choose(index);
}

void VorekSelector::SetWhereClauseOfList(const std::string& text) {
  if (Assign(where_of_list_, text, "WhereClauseOfList")) Hold({});
}

void VorekSelector::SetWhereClauseOfTree(const std::string& text) {
  if (Assign(where_of_tree_, text, "WhereClauseOfTree")) Hold({});
}

void VorekSelector::FillTree(std::int32_t parent) {
  const std::string below =
      parent > 0 ? "ParentID = " + std::to_string(parent) : "ParentID is null or ParentID = 0";
  Hold(Read({where_of_tree_, below}, kHeldRows + 1));
}

const PropertyTable& VorekSelector::OwnProperties() const {
  static const PropertyTable table = property::Join(
      {ReadWrite("AllowChange", &VorekSelector::AllowChange, &VorekSelector::SetAllowChange),
       ReadWrite("WhereClauseOfList", &VorekSelector::WhereClauseOfList,
                 &VorekSelector::SetWhereClauseOfList),
       ReadWrite("WhereClauseOfTree", &VorekSelector::WhereClauseOfTree,
                 &VorekSelector::SetWhereClauseOfTree)},
      ChoiceControl::OwnProperties());
  return table;
}

}  // namespace vorek
