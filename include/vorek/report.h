#ifndef VOREK_REPORT_H_
#define VOREK_REPORT_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "vorek/grid.h"
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
  // the run failed, which the user has been told. Throws Error if the definition can't be read.
  bool View(std::int32_t ID, const std::string& inParameterString = "",
            const std::string& inCallerStringValue = "");

  // Runs the loaded report again.
  bool Refresh(bool DoFilter = false, const std::string& inParameterString = "",
               const std::string& inCallerStringValue = "");

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
  // the first query. Throws Error(kInvalidCall) for a text that doesn't begin so.
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
  bool Editable() const;
  void SetEditable(bool on);
  std::int32_t flxMainTopRow() const;
  void SetflxMainTopRow(std::int32_t row);  // values below 1 give 1

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
  std::unique_ptr<ReportControl> impl_;
};

}  // namespace vorek

#endif  // VOREK_REPORT_H_
