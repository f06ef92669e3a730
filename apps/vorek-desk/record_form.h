#ifndef VOREK_APPS_VOREK_DESK_RECORD_FORM_H_
#define VOREK_APPS_VOREK_DESK_RECORD_FORM_H_

#include <cstdint>

#include "grid/grid.h"
#include "record.h"
#include "widgets/form.h"

namespace vorek::desk {

// A card with a record: the names of its fields with their values, as a grid of a report writes
// them, and below a small grid for each table that belongs to it. Nothing can be changed in it.
class RecordForm : public Form {
 public:
  // Reads all that it shows at once.
  RecordForm(Process& process, std::int32_t form_type, const Record& record);

  ControlArray<Label> lblField{*this, "lblField"};
  ControlArray<TextBox> txtField{*this, "txtField"};
  ControlArray<Label> lblTable{*this, "lblTable"};
  std::vector<std::unique_ptr<Grid>> flxTables;  // flxTable1, flxTable2, ...
  Button cmdClose{this, "cmdClose"};

 private:
  void ShowFields(Process& process, const RecordTable& master);
  void ShowTable(Process& process, const RecordTable& table);
  void Place();
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_RECORD_FORM_H_
