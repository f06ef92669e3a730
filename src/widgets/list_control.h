#ifndef VOREK_WIDGETS_LIST_CONTROL_H_
#define VOREK_WIDGETS_LIST_CONTROL_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "widgets/row_reader.h"
#include "widgets/typed_control.h"

namespace vorek {

// A row of a list: its key and what a person reads.
struct ListRow {
  std::int32_t id = 0;
  std::string text;
  std::string alternative;     // "" for a view without one
  std::int32_t form_type = 0;  // of an entity's row alone
};

// The base of the widgets that offer rows of a view: `ViewMajor` with its key in the column ID,
// shown by the column `ViewMinor` ("Name" if that is blank).
//
// Rows are read when they are asked for, and at most kHeldRows of them are held: a view of a
// million rows is searched by the database and never loaded whole. Nothing is read before
// OleConnectionString is set; the rows come over the connection of the reader.
class ListControl : public TypedControl {
 public:
  using TypedControl::TypedControl;

  static constexpr std::size_t kHeldRows = 500;

  // --- Events from the presenter -------------------------------------------------------------

  // Typing chooses the row with this text or alternative, or else the only one that holds it; "#12"
  // the row with that key; empty text is setNull. Without a row, and with several, the text isn't
  // taken: the rows that hold it are then held, to choose from.
  //
  // The user chose that row of those held. Throws Error(kSubscript) outside of them.
  virtual void Choose(std::int32_t index) = 0;

  // --- State for the presenter ---------------------------------------------------------------

  const std::vector<ListRow>& Rows() const { return rows_; }
  std::int32_t ListCount() const { return static_cast<std::int32_t>(rows_.size()); }
  bool MoreRows() const { return more_; }  // there are more than are held
  // The text that isn't taken is in several rows; they are held.
  bool OffersRows() const { return Refuses() && !rows_.empty() && offers_; }
  // Throws Error(kSubscript).
  const ListRow& At(std::int32_t index) const;
  // Why the last reading of the list gave nothing; "" if it went well.
  const std::string& ListError() const { return list_error_; }
  // False while the program has fixed the choice for the user.
  virtual bool ChangesByHand() const { return true; }

  const std::string& OleConnectionString() const { return connection_; }
  const std::string& ViewMajor() const { return view_major_; }
  const std::string& ViewMinor() const { return view_minor_; }
  const std::string& Caption() const { return caption_; }
  const std::string& WhereClause() const { return where_; }
  const std::string& OrderByClause() const { return order_; }
  bool SupportAlternative() const { return support_alternative_; }

  // --- Changes by the program ------------------------------------------------------------------

  // Must outlive the widget.
  void SetReader(RowReader* reader) { reader_ = reader; }
  void SetOleConnectionString(const std::string& text);
  // A table or view, or what else may stand behind "from". Rows held are dropped.
  void SetViewMajor(const std::string& text);
  void SetViewMinor(const std::string& text);
  void SetCaption(const std::string& text) { Assign(caption_, text, "Caption"); }
  // A condition of SQL, with or without "Where", and an order, with or without "Order by".
  void SetWhereClause(const std::string& text);
  void SetOrderByClause(const std::string& text);
  void SetSupportAlternative(bool on);

  // Holds the first rows of the view. A failure leaves none and is kept in ListError.
  void FillList();
  // The same with the first rows that a Search finds.
  void FillMatching(const std::string& typed);
  // Holds the first rows whose text or alternative holds what was typed. Throws what the database
  // throws.
  void Search(const std::string& typed);
  virtual void setNull() = 0;

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;
  // The row that a text or "#key" stands for, or in `reason` why there is none.
  std::optional<ListRow> RowTyped(const std::string& typed, std::string& reason);
  // Reads rows that fulfil WhereClause and these conditions, of which blank ones count as none.
  std::vector<ListRow> Read(std::vector<std::string> conditions, std::size_t limit);
  void Hold(std::vector<ListRow> rows);
  // The row of this key, whatever the clauses say.
  std::optional<ListRow> Lookup(std::int32_t id);
  // "Name", or what the view shows in its place.
  std::string TextColumn() const;

 private:
  virtual std::vector<std::string> Columns() const;  // what a query selects, text in front
  virtual ListRow RowOf(const ResultSet& result, std::size_t row) const;
  virtual std::string_view KeyColumn() const { return "ID"; }
  // A condition of the list alone.
  virtual std::string ListClause() const { return {}; }
  void Forget();
  // Holds what `read` gives; a failure leaves no row, is kept in ListError, and gives false.
  bool HoldOrTell(const std::function<std::vector<ListRow>()>& read);
  std::string Query(const std::vector<std::string>& conditions, std::size_t limit) const;
  std::vector<ListRow> Run(const std::vector<std::string>& conditions, std::size_t limit);
  std::string Matches(const std::string& pattern) const;
  std::vector<ListRow> Matching(const std::string& typed, bool whole, std::size_t limit);
  std::vector<ListRow> RowsTyped(const std::string& typed);

  RowReader* reader_ = nullptr;
  std::string connection_;
  std::string view_major_;
  std::string view_minor_;
  std::string caption_;
  std::string where_;
  std::string order_;
  std::string list_error_;
  bool support_alternative_ = false;
  std::vector<ListRow> rows_;
  bool more_ = false;
  bool offers_ = false;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_LIST_CONTROL_H_
