#include "vorek/shown_list.h"

#include <algorithm>

#include "text/utf8.h"
#include "widgets/basic_controls.h"
#include "widgets/reachable.h"
#include "widgets/vorek_entity_picker.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"

namespace vorek {
namespace {

bool IsChosen(const ListControl& list, const ListRow& row) {
  if (const auto* const many = dynamic_cast<const VorekMultiSelect*>(&list)) {
    return many->IsSelected(row.id);
  }
  if (const auto* const entity = dynamic_cast<const VorekEntityPicker*>(&list)) {
    return !entity->IsNull() && entity->FormTypeID() == row.form_type && entity->FormID() == row.id;
  }
  const auto* const choice = dynamic_cast<const ChoiceControl*>(&list);
  return choice != nullptr && !choice->IsNull() && choice->ID() == row.id;
}

ShownList PictureOf(const ListControl& list) {
  ShownList shown;
  for (const ListRow& row : list.Rows()) {
    shown.rows.push_back({row.id, row.form_type, row.text, row.alternative, IsChosen(list, row)});
  }
  shown.more = list.MoreRows();
  shown.several = dynamic_cast<const VorekMultiSelect*>(&list) != nullptr;
  shown.error = list.ListError();
  return shown;
}

ShownList PictureOf(const ComboBox& combo) {
  ShownList shown;
  for (const ComboBox::Item& item : combo.Items()) {
    const auto index = static_cast<std::int32_t>(shown.rows.size());
    shown.rows.push_back({item.data, 0, item.text, "", index == combo.ListIndex()});
  }
  return shown;
}

std::optional<ShownList> PictureOf(const Control* control) {
  if (const auto* const list = dynamic_cast<const ListControl*>(control)) return PictureOf(*list);
  const auto* const combo = dynamic_cast<const ComboBox*>(control);
  return combo == nullptr ? std::nullopt : std::optional(PictureOf(*combo));
}

// The number of the row among those that are held, -1 for one that isn't.
std::int32_t IndexOf(const ShownList& list, const ShownRow& wanted) {
  const auto same = [&](const ShownRow& row) {
    return row.key == wanted.key && row.form_type == wanted.form_type && row.text == wanted.text &&
           row.code == wanted.code;
  };
  const auto found = std::find_if(list.rows.begin(), list.rows.end(), same);
  return found == list.rows.end() ? -1 : static_cast<std::int32_t>(found - list.rows.begin());
}

// Of several a row that is chosen already would be turned over.
bool ChooseAt(ListControl& list, std::int32_t index, bool chosen) {
  const bool several = dynamic_cast<VorekMultiSelect*>(&list) != nullptr;
  if (!list.ChangesByHand() || (!several && !chosen)) return false;
  if (!several || IsChosen(list, list.At(index)) != chosen) list.Choose(index);
  return true;
}

}  // namespace

std::optional<ShownList> ListOf(Control& root, std::string_view path) {
  return PictureOf(root.Find(path));
}

std::optional<ShownList> OpenList(Control& root, std::string_view path) {
  Control* const control = Reachable(root, path);
  if (auto* const list = dynamic_cast<ListControl*>(control)) list->FillList();
  return PictureOf(control);
}

std::optional<ShownList> SearchList(Control& root, std::string_view path, const std::string& text) {
  auto* const list = dynamic_cast<ListControl*>(Reachable(root, path));
  if (list == nullptr) return std::nullopt;
  if (text::TrimView(text).empty()) {
    list->FillList();
  } else {
    list->FillMatching(text);
  }
  return PictureOf(*list);
}

bool ChooseRow(Control& root, std::string_view path, const ShownRow& row, bool chosen) {
  Control* const control = Reachable(root, path);
  const std::optional<ShownList> held = PictureOf(control);
  const std::int32_t index = held ? IndexOf(*held, row) : -1;
  if (index < 0) return false;
  if (auto* const list = dynamic_cast<ListControl*>(control)) return ChooseAt(*list, index, chosen);
  if (!chosen) return false;
  static_cast<ComboBox&>(*control).Choose(index);
  return true;
}

bool ChooseAll(Control& root, std::string_view path, bool chosen) {
  auto* const many = dynamic_cast<VorekMultiSelect*>(Reachable(root, path));
  if (many == nullptr) return false;
  if (chosen) {
    many->SelectAll();
  } else {
    many->setNull();
  }
  return true;
}

}  // namespace vorek
