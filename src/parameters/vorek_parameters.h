#ifndef VOREK_PARAMETERS_VOREK_PARAMETERS_H_
#define VOREK_PARAMETERS_VOREK_PARAMETERS_H_

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "parameters/cell_cursor.h"
#include "parameters/parameter_dependencies.h"
#include "parameters/parameter_kind.h"
#include "parameters/parameter_widgets.h"
#include "state/confirmed_value.h"
#include "state/notices.h"
#include "state/process.h"
#include "widgets/form.h"

namespace vorek {

// The form that asks for a report's parameters, made anew by each View from the catalogue: one
// widget for each parameter that the query uses, in a grid of cells from right to left. Confirmed,
// it writes the values into the query's text and hands that on.
class VorekParameters : public Frame {
 public:
  VorekParameters(Control* parent, std::string name, Process& process, Notices& notices);

  std::string_view Kind() const override { return "VorekParameters"; }

  // Enter confirms, unless a widget that needs the key for itself is active.
  void KeyDown(int key_code, int shift) override;

  // The public fields.
  std::string ListOfVisualParameters;  // key list of what a person reads, of the last confirmation
  std::string ListOfParameters;        // key list of the literals
  bool userChoice = false;             // the form was confirmed; taken back by who runs the report
  bool result = false;                 // the form was confirmed
  bool CancelVisible = false;
  std::int32_t GivenValue = 0;  // stands for "#" in a WhereClause
  bool CallByReport = false;
  std::int32_t PeriodID = -1;

  // The values of the last confirmation; none before there was one.
  std::vector<ConfirmedValue> ConfirmedValues() const {
    return values_.value_or(std::vector<ConfirmedValue>());
  }

  // Builds the form for new_width twips. True if the query has parameters and the form stands; a
  // marker without a parameter is told to the user. Throws what the database throws.
  bool View(std::int32_t inReportID, std::string& roughSQL, std::int32_t new_width);
  void SetReportCaption(const std::string& caption);
  // Gives the form of a ledger report the period and the branch, and confirms it where the report
  // that calls shows at once (parameters/parameter_dependencies.h). Nothing on other forms.
  void FillInitially();
  // Fills the form from the user's shared filter, as far as SharedFilterIDs names its fields, and
  // confirms it; a form that is empty then is reset. False, and nothing done, without such a filter
  // or without a date or a selector of it.
  bool SetSharedFilters();
  // By ParameterID, the number under which the shared filter holds the value.
  std::map<std::int32_t, std::int32_t> SharedFilterIDs;
  // Nothing is entered or chosen on the form.
  bool isFormEmpty();

  std::function<void(const std::string& roughSQL)> on_search;
  std::function<void()> on_clear;
  std::function<void()> on_cancel;
  // The form needs another height: it was folded, or a note came or went.
  std::function<void()> on_content_change;

  // --- How much of the form shows, for owners that have it on the screen beside other things -----

  bool CanFold = false;  // cmdFold is offered from the next View on
  bool Folded() const { return folded_; }
  // The owner shows the title and the values in force itself. Call it before View.
  bool HeadElsewhere = false;
  // Folded, the form is a line that tells the values of the last confirmation, and nothing where
  // the owner tells them.
  void SetFolded(bool folded);
  // The height of the whole form, of which Height shows as much as there is room for.
  std::int32_t ContentHeight() const;
  // The part of a cell that its label takes, in twips.
  std::int32_t LabelWidth() const { return measures_.label_width; }
  // The greatest height in twips, 0 for no limit; what lies below is scrolled to.
  void SetRoom(std::int32_t height);
  // Gives the focus to the first field that takes it.
  void FocusFirst();

  // A parameter on the form. The widget goes with the next View.
  struct Field {
    ParameterRow row;
    Control* widget = nullptr;
    Label* label = nullptr;
    // Where both stand while no text is refused.
    std::int32_t top = 0;
    std::int32_t label_top = 0;
  };
  const std::vector<Field>& Fields() const { return fields_; }
  // The first visible field that holds a text back which it doesn't take; null for none.
  Control* RefusedField() const;

  Label lblCaption{this, "lblCaption"};
  Button cmdOk{this, "cmdOk"};
  Button cmdNew{this, "cmdNew"};
  Button cmdCancel{this, "cmdCancel"};
  Button cmdFold{this, "cmdFold"};
  Label lblValues{this, "lblValues"};
  Button cmdSaveParameterConfig{this, "cmdSaveParameterConfig"};
  Button cmdLoadParameterConfig{this, "cmdLoadParameterConfig"};
  Menu mnuPopup{this, "mnuPopup"};
  ControlArray<Menu> mnuConfig{mnuPopup, "mnuConfig"};  // member 0 stands for no settings
  Frame frame{this, "frame"};
  ParameterWidgets widgets;
  ControlArray<Label> lblNote{frame, "lblNote"};  // why texts aren't taken, below their fields

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  // The measures of the form, in twips.
  struct Measures {
    std::int32_t last_width = 0;  // of the control at its last resize
    std::int32_t label_width = 0;
    std::int32_t row_height = 0;
    std::int32_t column_width = 4000;
    std::int64_t used_rows = 0;
    std::int32_t notes_height = 0;
  };

  void ConnectEvents();
  void NameButtons();

  // Building.
  bool BuildForm();
  void ReadMeasures();
  bool Uses(const ParameterRow& row) const;
  void AddParameterControl(const ParameterRow& row);
  Label& AddLabel(const ParameterRow& row, const ParameterKind& kind, Control& widget);
  void PlaceWidget(const ParameterRow& row, const ParameterKind& kind, Control& widget);
  void Mirror(Control& control);
  void ListenToKeys(Control& widget);
  void Escape(Control& widget);
  void NumberButtons();
  void LayoutButtons();
  void Resize();
  std::int32_t CellLeft() const;
  std::int32_t CellTop() const;

  void PlaceNotes();
  void PlaceCaption();
  void ShowFold();
  void TakeHeight();
  std::vector<ConfirmedValue> ReadValues() const;
  Label& AddNote(const Field& field, const std::string& text);

  // Saved settings.
  void BuildSettingsMenu();
  void ShowSettingButtons();
  void LoadSetting(const std::string& name);
  void SaveSetting();
  void ShowSetting(const std::string& list);
  void ShowStored(Control& widget, const std::string& value);

  // Using.
  void ListenToChanges(Control& widget);
  void Confirm();
  bool WriteValues(std::string& query);
  bool WriteValue(const ParameterRow& row, std::string& query);
  void Reset();

  Process& process_;
  Notices& notices_;
  std::int32_t report_id_ = -1;
  std::int32_t form_width_ = 0;
  std::string query_;  // with its markers
  Measures measures_;
  CellCursor cells_;
  std::int32_t tab_counter_ = 0;
  std::vector<Field> fields_;
  std::int32_t caption_width_ = 0;  // that the title needs
  std::int32_t room_ = 0;
  bool folded_ = false;
  std::optional<std::vector<ConfirmedValue>> values_;  // of the last confirmation
  bool saving_ = false;
  ParameterDependencies dependencies_{widgets, process_};
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_VOREK_PARAMETERS_H_
