#ifndef VOREK_EXPORT_FORM_ACCESS_H_
#define VOREK_EXPORT_FORM_ACCESS_H_

#include <functional>
#include <string>

#include "export/file_form.h"
#include "grid/grid.h"

namespace vorek {

// Asks for an Access file and a table of it, and shows which report column goes into which field:
// the fields' descriptions say so.
class FormAccess : public FileForm {
 public:
  FormAccess(Process& process, Notices& notices);

  // Modal. True if the user accepted; ColumnMapping is then filled.
  bool getAccessFileTemplate(std::string& fileName, std::string& tableName);

  // What can't be read leaves the list or the cells empty, and the user is told the reason.
  void ListAccessTables(const std::string& fileName);
  void ShowAccessFields(const std::string& fileName, const std::string& tableName);

  ComboBox cmbTables{this, "cmbTables"};
  Button cmdRefresh{this, "cmdRefresh"};
  Grid flxColumn{this, "flxColumn"};

 private:
  void Place();
  void Reset();
  void cmdSave_Click();
  void cmdRefresh_Click();
  void cmdOk_Click();
  bool IsChosen();
  void TellRefusal(const std::function<void()>& read);
  std::string CellText(std::int32_t row, std::int32_t col) const;
  void MapRow(std::int32_t row);
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FORM_ACCESS_H_
