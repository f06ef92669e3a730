#ifndef VOREK_REPORT_H_
#define VOREK_REPORT_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "vorek/grid.h"
#include "vorek/property_store.h"
#include "vorek/world.h"

namespace vorek {

class Control;
class ReportControl;

// What a control tells its host. Arguments are by reference; a host may change them.
struct ReportEvents {
  std::function<void(bool& Cancel)> DblClick;  // a true Cancel ends the drill-through
  std::function<void(std::int16_t& KeyCode, std::int16_t& Shift)> KeyDown;
  std::function<void(std::int16_t& KeyAscii)> KeyPress;  // not raised by now
  std::function<void()> Cancel;                          // the panel's cancel button
  std::function<void(std::int16_t& Button, std::int16_t& Shift, float& x, float& Y)>
      MouseMove;                        // not raised by now
  std::function<void()> ViewCelChange;  // another record is selected
  std::function<void(std::int32_t& FormTypeID, std::string& InvokedValueStr)> InvokeClearShow;
  std::function<void(std::int32_t& FormTypeID, std::string& UniqueWC, std::string& InvokedValueStr)>
      InvokeView;
  // Escape on a grid: the window that the control stands in is to be closed. Only for a control
  // that stands in no form of ours.
  std::function<void()> CloseParent;
  // The window of a related report leads back to this control.
  std::function<void()> ComeToFront;
  // The buttons of an Editable control: a new record is wanted, the current one is to be changed or
  // deleted. The control changes no data by itself; FormTypeID, FormID and UniqueWC tell the
  // record. Changing it then does what a double click on it does.
  std::function<void()> AddClick;
  std::function<void()> EditClick;
  std::function<void()> DeleteClick;
};

// The report viewer: shows a report of the catalogue, by number, in a grid.
//
// A host sets the connection and the user, then calls View. Nothing here draws: the control is
// plain state, and a presenter shows it. -1 stands for no report, form or user.
class VorekReport1 {
 public:
  // The world must outlive the control.
  explicit VorekReport1(World& world);
  ~VorekReport1();
  VorekReport1(const VorekReport1&) = delete;
  VorekReport1& operator=(const VorekReport1&) = delete;

  // Shows the report `ID`. inParameterString is a key list "@1=5&@2='x'" of parameter numbers with
  // SQL texts; empty lets the report ask for its parameters. True if the report was loaded and its
  // first run didn't fail, also if it waits for its parameters; false if the right was denied or
  // the run failed. The user has been told why, or StopReason says it. Throws Error if the
  // definition can't be read.
  bool View(std::int32_t ID, const std::string& inParameterString = "",
            const std::string& inCallerStringValue = "");

  // Runs the loaded report again.
  bool Refresh(bool DoFilter = false, const std::string& inParameterString = "",
               const std::string& inCallerStringValue = "");

  // Why the report that was asked for isn't on show, in Persian, where no message, form or event
  // has told it: there is no report of that number (View is true then, and shows an empty grid), it
  // has no query, a parameter string leaves a marker, an error ended the run silently. "" for all
  // else.
  std::string StopReason() const;

  // Shows a report in a modal window of its own, in which something is looked up; the same number
  // again shows the same window. Always true. None of these three asks for the right to the
  // control's own use of the report, and each throws Error if the definition can't be read.
  bool ShowWithParams(std::int32_t ID);
  // Shows a report here after a dialog that asks for the parameters to which the string gives no
  // value; a dialog that is given up shows an empty grid. Always true.
  bool ViewRepotRelations(std::int32_t ID, const std::string& inParameterString = "");
  // Opens a related report, with the values of the key list CallerStr, in a window of its own, and
  // raises InvokeView or InvokeClearShow for a record that was chosen there. Nothing for an empty
  // string or a number below 1.
  void ViewReportWithoutParameters(std::int32_t& calledRepportID, std::string& CallerStr,
                                   std::string& InvRepTitle);
  // No report any more: the first row is emptied, headers and widths stay.
  void Clear();
  // Releases what the report holds. Always false.
  bool setNull();
  // Takes the "+" away from tree rows that have no children any more. Always false.
  bool DropUnusedrows();
  // Sorts the result by a column, the other way round if it was the last one; 0 sorts by that
  // again.
  void SortflxMain(std::int32_t column);
  // Folds the rows that share the key of the layout, where the report asks for it.
  void MakeFlexMerged();
  // Fills the panel on show from the user's shared filter, and confirms it. Always false.
  bool SetSharedFilters();
  // The average of the column under the pointer, as the header's menu makes it.
  void mnuAvg_Click();

  // The stored properties: the defaults of a new control, and reading and writing a host's store.
  // Reading throws Error, naming the key, for a value that a property can't hold.
  void InitProperties();
  void ReadProperties(PropertyStore& store);
  void WriteProperties(PropertyStore& store);
  // Told the key of a stored property whenever it is assigned.
  std::function<void(const std::string& key)> PropertyChanged;

  // An event of a widget beside the report: "Changed", in any case, runs the report again.
  void ObjectEvent(const std::string& name);

  // Applies the column layouts to the grids; true reads the stored layout anew.
  void AlignFlexes(bool RetriveFromDB = false);

  // True if the result is shown as a tree.
  bool MakeTree() const;
  bool isTransposeFlexTree() const;

  std::int16_t UserID() const;
  void SetUserID(std::int16_t id);
  std::int32_t PeriodID() const;
  void SetPeriodID(std::int32_t id);
  std::int16_t OperationMode() const;
  void SetOperationMode(std::int16_t mode);
  std::int16_t PositionID() const;
  void SetPositionID(std::int16_t id);
  std::int16_t EmployeeID() const;
  void SetEmployeeID(std::int16_t id);

  // "Provider=name;..." of the database. Assigning binds the world to it; nothing is opened before
  // the first query. Throws Error(kInvalidCall) for a text that doesn't begin so and
  // Error(kConnection) for a provider that the world doesn't have; the former text then stays.
  const std::string& OleConnectionString() const;
  void SetOleConnectionString(const std::string& text);

  const std::string& Title() const;
  std::int32_t FormID() const;
  void SetFormID(std::int32_t id);
  std::int32_t FormTypeID() const;
  void SetFormTypeID(std::int32_t id);
  const std::string& UniqueWC() const;  // a condition on the current record
  bool Enabled() const;
  void SetEnabled(bool on);
  const std::string& UseThisQuery() const;  // replaces the stored query at the next View
  void SetUseThisQuery(const std::string& text);
  bool Enable_DbClick() const;
  void SetEnable_DbClick(bool on);
  // An editable control shows three buttons beside the grid: see ReportEvents.
  bool Editable() const;
  void SetEditable(bool on);
  // Stored numbers, which View sets by flxMain: its rows, its height, the height of its row 1.
  std::int32_t flxMainRows() const;
  void SetflxMainRows(std::int32_t rows);
  std::int32_t flxMainHeight() const;
  void SetflxMainHeight(std::int32_t twips);
  std::int32_t flxMainRowHeight() const;
  void SetflxMainRowHeight(std::int32_t twips);
  std::int32_t flxMainTopRow() const;
  void SetflxMainTopRow(std::int32_t row);  // values below 1 give 1

  // The public fields.
  bool ShowDiagram() const;
  void SetShowDiagram(bool on);
  bool CancelVisible() const;
  void SetCancelVisible(bool on);
  bool isTransposedResult() const;
  void SetisTransposedResult(bool on);
  std::int32_t ParentID() const;  // the row whose children a tree shows; 0 and -1 for the top
  void SetParentID(std::int32_t id);
  std::int32_t CallerID() const;
  void SetCallerID(std::int32_t id);
  std::int32_t local_ParentID() const;
  void Setlocal_ParentID(std::int32_t id);

  // In twips.
  void Resize(std::int32_t width, std::int32_t height);

  // The grids, and the cells of the one that is shown. A row outside gives "".
  FlexGrid& getflxMain();
  FlexGrid& getflxTranspose();
  std::string TextMatrix(std::int32_t Row, std::int32_t Col) const;
  std::int32_t Rows() const;
  std::int32_t Cols() const;

  // The number of records of the last run, -1 if there is no result.
  std::int32_t QueryRecordCount() const;

  ReportEvents& Events();

  // The tree of controls behind it, for presenters.
  Control& Root();
  ReportControl& Impl() { return *impl_; }

 private:
  void Mark(const char* key);

  std::unique_ptr<ReportControl> impl_;
};

}  // namespace vorek

#endif  // VOREK_REPORT_H_
