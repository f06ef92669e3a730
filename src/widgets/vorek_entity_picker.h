#ifndef VOREK_WIDGETS_VOREK_ENTITY_PICKER_H_
#define VOREK_WIDGETS_VOREK_ENTITY_PICKER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "widgets/list_control.h"

namespace vorek {

// Picks a record of any form: the number of its form type and its key within it. The view, if there
// is one, has the columns FormTypeID and FormID beside the one that is shown.
class VorekEntityPicker : public ListControl {
 public:
  using ListControl::ListControl;
  std::string_view Kind() const override { return "VorekEntityPicker"; }

  // Typing takes both halves beside a text to search for: "901:5", "#901:5"; "#5" is the record
  // with that FormID if it is the only one.
  void Choose(std::int32_t index) override;

  // --- State for the presenter ---------------------------------------------------------------

  bool IsNull() const { return form_type_ <= 0 || form_ <= 0; }  // while a half is missing
  std::int32_t FormTypeID() const { return form_type_; }         // 0 for none
  std::int32_t FormID() const { return form_; }                  // 0 for none

  // --- Changes by the program: each raises on_change if the half is another -------------------

  void SetFormTypeID(std::int32_t id) { Take(id, form_); }
  void SetFormID(std::int32_t id) { Take(form_type_, id); }
  void setNull() override { Take(0, 0); }

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;

 private:
  std::string_view KeyColumn() const override { return "FormID"; }
  std::vector<std::string> Columns() const override;
  ListRow RowOf(const ResultSet& result, std::size_t row) const override;
  void Take(std::int32_t form_type, std::int32_t form);

  std::int32_t form_type_ = 0;
  std::int32_t form_ = 0;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_ENTITY_PICKER_H_
