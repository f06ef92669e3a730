#ifndef VOREK_WIDGETS_VOREK_MULTI_SELECT_H_
#define VOREK_WIDGETS_VOREK_MULTI_SELECT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "widgets/list_control.h"

namespace vorek {

// A list widget of which any number of rows is chosen. Nothing chosen and everything chosen both
// mean that there is no restriction.
class VorekMultiSelect : public ListControl {
 public:
  using ListControl::ListControl;
  std::string_view Kind() const override { return "VorekMultiSelect"; }

  // Typing replaces the choice by the rows of a list with commas, "11,12": their keys, with or
  // without "#", or texts; "*" and "همه" choose all. A piece without a row refuses the whole text.
  //
  // Turns the row over: chosen or not. Out of a choice of all it makes one of all rows but this;
  // for that the view may have kMostChosen rows. Throws Error(kInvalidCall) for a larger one.
  void Choose(std::int32_t index) override;
  static constexpr std::size_t kMostChosen = 5000;

  // --- State for the presenter ---------------------------------------------------------------

  std::string SelectedIDs() const;  // "11,12", in the order of choice; "" for none and for all
  bool AllSelected() const { return all_; }
  bool NoneSelected() const { return !all_ && ids_.empty(); }
  bool IsSelected(std::int32_t id) const;

  // --- Changes by the program: each raises on_change if the choice is another -----------------

  // Takes the whole numbers above 0 of a text with commas ("," or "،"), each once; what else stands
  // in it is passed over.
  void SetSelectedIDs(const std::string& text);
  void SelectAll() { Take({}, true); }
  void setNull() override { Take({}, false); }

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;

 private:
  std::vector<std::int32_t> AllBut(std::int32_t id);
  void Take(std::vector<std::int32_t> ids, bool all);
  void SetAllSelected(bool on) { Take({}, on); }

  std::vector<std::int32_t> ids_;
  bool all_ = false;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_MULTI_SELECT_H_
