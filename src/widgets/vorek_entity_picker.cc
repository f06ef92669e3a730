#include "widgets/vorek_entity_picker.h"

#include <cstdio>
#include <utility>

#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// "901:5" alone, both above 0.
bool ParseHalves(const std::string& plain, std::int32_t& form_type, std::int32_t& form) {
  int end = 0;
  const int read = std::sscanf(plain.c_str(), "%9d:%9d%n", &form_type, &form, &end);
  return read == 2 && static_cast<std::size_t>(end) == plain.size() && form_type > 0 && form > 0;
}

}  // namespace

std::string VorekEntityPicker::TakeTyped(const std::string& text) {
  std::string plain = PlainTyped(text);
  if (plain.starts_with('#')) plain.erase(0, 1);
  std::int32_t form_type = 0;
  std::int32_t form = 0;
  if (!ParseHalves(plain, form_type, form)) return ListControl::TakeTyped(text);
  Take(form_type, form);
  return {};
}

void VorekEntityPicker::Choose(std::int32_t index) {
  if (Enabled()) Take(At(index).form_type, At(index).id);
}

void VorekEntityPicker::Take(std::int32_t form_type, std::int32_t form) {
  DropRefusal();
  const bool type_changed = std::exchange(form_type_, form_type) != form_type;
  const bool form_changed = std::exchange(form_, form) != form;
  if (type_changed) Changed("FormTypeID");
  if (form_changed) Changed("FormID");
  if ((type_changed || form_changed) && on_change) on_change();
}

std::vector<std::string> VorekEntityPicker::Columns() const {
  return {TextColumn(), "FormID", "FormTypeID"};
}

ListRow VorekEntityPicker::RowOf(const ResultSet& result, std::size_t row) const {
  const auto number = [&](std::size_t column) {
    const FieldValue value(result.columns[column], row);
    return value.IsNull() ? 0 : value.Number();
  };
  return {.id = number(1),
          .text = result.columns[0].Display(row),
          .alternative = {},
          .form_type = number(2)};
}

const PropertyTable& VorekEntityPicker::OwnProperties() const {
  using property::ReadOnly;
  using property::ReadWrite;
  static const PropertyTable table = property::Join(
      {ReadWrite("FormTypeID", &VorekEntityPicker::FormTypeID, &VorekEntityPicker::SetFormTypeID),
       ReadWrite("FormID", &VorekEntityPicker::FormID, &VorekEntityPicker::SetFormID),
       ReadOnly("IsNull", &VorekEntityPicker::IsNull)},
      ListControl::OwnProperties());
  return table;
}

}  // namespace vorek
