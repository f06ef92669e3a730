#ifndef VOREK_WIDGETS_VOREK_SELECTOR_H_
#define VOREK_WIDGETS_VOREK_SELECTOR_H_

#include <cstdint>
#include <string>
#include <vector>

#include "widgets/list_control.h"

namespace vorek {

// A list widget of which one row is chosen: the base of the two below.
class ChoiceControl : public ListControl {
 public:
  using ListControl::ListControl;

  void Choose(std::int32_t index) override;

  // --- State for the presenter ---------------------------------------------------------------

  bool IsNull() const { return !chosen_; }
  std::int32_t ID() const { return chosen_ ? chosen_->id : 0; }  // 0 for none
  std::string Description() const { return chosen_ ? chosen_->text : ""; }

  // --- Changes by the program: each raises on_change if another row is chosen -----------------

  // Shows the row of that key, also one that the clauses leave out; a key without a row is
  // setNull. Throws what the database throws.
  void SetID(std::int32_t id);
  void setNull() override { Take(std::nullopt); }

 protected:
  const PropertyTable& OwnProperties() const override;
  void Take(std::optional<ListRow> row);

 private:
  std::optional<ListRow> chosen_;
};

// A field that opens a list of rows, or a tree of them where the view has a column ParentID.
class VorekSelector : public ChoiceControl {
 public:
  using ChoiceControl::ChoiceControl;
  std::string_view Kind() const override { return "VorekSelector"; }

  // Neither has an effect while the choice is fixed.
  void Type(const std::string& text) override;
  void Choose(std::int32_t index) override;

  // False fixes the choice for the user; the program may still change it.
  bool AllowChange() const { return allow_change_; }
  bool ChangesByHand() const override { return allow_change_; }
  void SetAllowChange(bool on) { Assign(allow_change_, on, "AllowChange"); }
  // Conditions of the list and of the tree alone, beside WhereClause.
  const std::string& WhereClauseOfList() const { return where_of_list_; }
  void SetWhereClauseOfList(const std::string& text);
  const std::string& WhereClauseOfTree() const { return where_of_tree_; }
  void SetWhereClauseOfTree(const std::string& text);

  // Holds the first rows below that row of the tree, its top for 0. Throws what the database
  // throws, for a view without ParentID too.
  void FillTree(std::int32_t parent);

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::string ListClause() const override { return where_of_list_; }

  std::string where_of_list_;
  std::string where_of_tree_;
  bool allow_change_ = true;
};

// The same choice with its list always open.
class VorekPickerPanel : public ChoiceControl {
 public:
  using ChoiceControl::ChoiceControl;
  std::string_view Kind() const override { return "VorekPickerPanel"; }
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_SELECTOR_H_
