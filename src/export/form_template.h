#ifndef VOREK_EXPORT_FORM_TEMPLATE_H_
#define VOREK_EXPORT_FORM_TEMPLATE_H_

#include <cstdint>
#include <string>

#include "state/notices.h"
#include "state/process.h"
#include "widgets/form.h"
#include "widgets/tab_strip.h"

namespace vorek {

// Asks for the template of a report: a workbook, none of them, or a print template of the second
// tab.
class FormTemplate : public Form {
 public:
  FormTemplate(Process& process, Notices& notices);

  void CloseBox() override { Close(false); }

  // Modal. True if the user accepted: the path of the chosen template then, empty for none, and
  // whether it is a workbook's. REQUIRES: FormID.
  bool GetReportTemplate(std::string& templatePath, bool& isExcel);

  std::int32_t FormID = -1;  // the report's number
  std::int32_t UserID = -1;  // for the attachment manager

  TabStrip SSTab1{this, "SSTab1"};
  Frame frameExcel{&SSTab1, "frameExcel"};
  Frame frameCrystal{&SSTab1, "frameCrystal"};
  Label lblChoose{&frameExcel, "lblChoose"};
  Label lblExcelTemplate{&frameExcel, "lblExcelTemplate"};
  ComboBox cmbExcelTemplate{&frameExcel, "cmbExcelTemplate"};
  Label lblExcelPath{&frameExcel, "lblExcelPath"};
  ComboBox cmbExcelPath{&frameExcel, "cmbExcelPath"};
  Label lblCrystalReport{&frameCrystal, "lblCrystalReport"};
  ComboBox cmbCrystalReport{&frameCrystal, "cmbCrystalReport"};
  Label lblCrystalReportPath{&frameCrystal, "lblCrystalReportPath"};
  ComboBox cmbCrystalReportPath{&frameCrystal, "cmbCrystalReportPath"};
  Button cmdMedia{this, "cmdMedia"};
  Button cmdOk{this, "cmdOk"};
  Button cmdCancel{this, "cmdCancel"};

 private:
  // A list of names with its list of files, and what was chosen there.
  struct Choice {
    ComboBox& names;
    ComboBox& paths;
    std::string path = {};
    std::int32_t list_index = 0;  // chosen last; lasts as long as the form
  };

  void Dress();
  void Place();
  void LoadLists();
  void Fill(Choice& choice, const std::string& extensions);
  void Take(Choice& choice);
  void EnableTab();
  void cmdMedia_Click();
  void cmdOk_Click();
  bool TakeExcel();
  bool TakeCrystal();
  bool Fetch(Choice& choice);
  void Close(bool accepted);

  Process& process_;
  Notices& notices_;
  Choice excel_{cmbExcelTemplate, cmbExcelPath};
  Choice crystal_{cmbCrystalReport, cmbCrystalReportPath};
  bool is_excel_choice_ = true;
  bool accepted_ = false;
  bool filling_ = false;  // what changes then is no choice of the user
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FORM_TEMPLATE_H_
