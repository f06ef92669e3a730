#include "export/form_template.h"

#include "catalog/recordset.h"
#include "export/attachment.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr int kDelete = 46;
constexpr int kEnter = 13;
constexpr int kEscape = 27;
constexpr std::int32_t kExcelTab = 0;

// The position of the line with that number; -1 for none.
std::int32_t LineOf(const ComboBox& box, std::int32_t data) {
  for (std::int32_t line = 0; line < box.ListCount(); ++line) {
    if (box.At(line).data == data) return line;
  }
  return -1;
}

}  // namespace

FormTemplate::FormTemplate(Process& process, Notices& notices)
    : Form(process.windows(), "FormTemplate"), process_(process), notices_(notices) {
  Dress();
  Place();
  on_load = [this] { LoadLists(); };
  SSTab1.on_tab = [this] { EnableTab(); };
  cmbExcelTemplate.on_change = [this] { Take(excel_); };
  cmbCrystalReport.on_change = [this] { Take(crystal_); };
  cmbExcelTemplate.on_key_down = [this](int key_code, int) {
    if (key_code == kDelete) cmbExcelTemplate.SetListIndex(-1);
  };
  on_form_key_down = [this](int key_code, int) {
    if (key_code == kEnter) cmdOk_Click();
    if (key_code == kEscape) Close(false);
  };
  cmdMedia.on_click = [this] { cmdMedia_Click(); };
  cmdOk.on_click = [this] { cmdOk_Click(); };
  cmdCancel.on_click = [this] { Close(false); };
}

void FormTemplate::Dress() {
  SetCaption("الگوهاي چاپي");
  SetRightToLeft(true);
  SSTab1.SetCaptions({"اكسل", "كريستال"});
  lblChoose.SetCaption("لطفاً يكي از الگوهاي تعريف شده زير را انتخاب كنيد:");
  lblExcelTemplate.SetCaption("نام الگو:");
  lblExcelPath.SetCaption("نام فايل الگو:");
  lblCrystalReport.SetCaption("نام الگو:");
  lblCrystalReportPath.SetCaption("نام فايل الگو:");
  cmbExcelTemplate.SetToolTipText("كليد Delete: چاپ بدون الگو");
  cmdMedia.SetCaption("...پيوستها");
  cmdOk.SetCaption("تاييد");
  cmdCancel.SetCaption("انصراف");
}

void FormTemplate::Place() {
  constexpr std::int32_t kWidth = 6600;
  constexpr std::int32_t kPage = kWidth - 360;
  constexpr std::int32_t kLabel = 1300;
  constexpr std::int32_t kField = kPage - kLabel - 360;
  Move(0, 0, kWidth, 3480);
  SSTab1.Move(120, 120, kWidth - 240, 2520);
  for (Frame* const page : {&frameExcel, &frameCrystal}) {
    page->Move(60, TabStrip::kTabHeight + 60, kPage, 1980);
    page->SetRightToLeft(true);
  }
  lblChoose.Move(120, 120, kPage - 240, 320);
  std::int32_t tab = 0;
  const auto line = [&](Label& label, ComboBox& box, std::int32_t top) {
    label.Move(kPage - kLabel - 120, top, kLabel, 340);
    box.Move(120, top, kField, 360);
    label.SetRightToLeft(true);
    box.SetRightToLeft(true);
    box.SetTabIndex(tab++);
  };
  line(lblExcelTemplate, cmbExcelTemplate, 640);
  line(lblExcelPath, cmbExcelPath, 1200);
  line(lblCrystalReport, cmbCrystalReport, 640);
  line(lblCrystalReportPath, cmbCrystalReportPath, 1200);
  cmdMedia.Move(kWidth - 1620, 2820, 1500, 420);
  cmdOk.Move(1560, 2820, 1320, 420);
  cmdCancel.Move(120, 2820, 1320, 420);
  for (Button* const button : {&cmdMedia, &cmdOk, &cmdCancel}) button->SetTabIndex(tab++);
  lblChoose.SetRightToLeft(true);
}

bool FormTemplate::GetReportTemplate(std::string& templatePath, bool& isExcel) {
  excel_.path.clear();
  crystal_.path.clear();
  process_.windows().SetMousePointer(0);
  accepted_ = false;
  ShowModal();
  if (!accepted_) return false;
  isExcel = is_excel_choice_;
  templatePath = isExcel ? excel_.path : crystal_.path;
  return true;
}

void FormTemplate::LoadLists() {
  filling_ = true;
  Fill(excel_, "(FileExtension like 'xls' or FileExtension like 'xlt')");
  Fill(crystal_, "FileExtension like 'rpt'");
  if (cmbCrystalReport.ListCount() > 0 && cmbCrystalReport.ListIndex() < 0) {
    cmbCrystalReport.SetListIndex(0);
  }
  filling_ = false;
  Take(excel_);
  Take(crystal_);
  SSTab1.SetTab(kExcelTab);
  EnableTab();
}

void FormTemplate::Fill(Choice& choice, const std::string& extensions) {
  choice.names.Clear();
  choice.paths.Clear();
  Recordset& rows = process_.dten().rssqlGeneral1;
  rows.Close();
  rows.Open(
      "Select * from tblVorekFormAttachment where FormTypeID=" + std::to_string(kTemplateFormType) +
      " and " + extensions + " and FormID=" + std::to_string(FormID));
  for (; !rows.AtEnd(); rows.MoveNext()) {
    const std::int32_t number = rows.Field("RowNumber").Number();
    choice.names.AddItem(rows.Field("Title").Text(), number);
    choice.paths.AddItem(rows.Field("FileName").Text(), number);
  }
  rows.Close();
  const std::int32_t last = choice.list_index;
  if (last >= 0 && last < choice.names.ListCount()) choice.names.SetListIndex(last);
}

// A name is chosen, or none any more.
void FormTemplate::Take(Choice& choice) {
  if (filling_) return;
  const std::int32_t line = choice.names.ListIndex();
  const std::int32_t path = line < 0 ? -1 : LineOf(choice.paths, choice.names.At(line).data);
  choice.paths.SetListIndex(path);
  choice.path = path < 0 ? "" : choice.paths.At(path).text;
  // A list without lines has no place to remember.
  if (choice.names.ListCount() > 0) choice.list_index = line;
}

void FormTemplate::EnableTab() {
  is_excel_choice_ = SSTab1.Tab() == kExcelTab;
  for (Control* const control : frameExcel.Children()) control->SetEnabled(is_excel_choice_);
  for (Control* const control : frameCrystal.Children()) control->SetEnabled(!is_excel_choice_);
}

// The lists are read again: what the user has attached meanwhile can be chosen at once.
void FormTemplate::cmdMedia_Click() {
  AttachmentManager* const manager = process_.services.attachments.get();
  if (manager == nullptr) {
    notices_.ShowMessage("خطا", "برنامه پيوستها در دسترس نيست.");
    return;
  }
  const std::string& connection = process_.main.ConnectionText;
  manager->SetConnectionString(connection);
  manager->SetOleConnectionString(connection);
  manager->SetUserID(UserID);
  manager->SetFormID(FormID);
  manager->SetFormTypeID(kTemplateFormType);
  manager->Show();
  const std::int32_t tab = SSTab1.Tab();
  LoadLists();
  SSTab1.SetTab(tab);
}

void FormTemplate::cmdOk_Click() {
  if (!(SSTab1.Tab() == kExcelTab ? TakeExcel() : TakeCrystal())) return;
  if (process_.services.settings != nullptr) {
    IgnoreErrors([&] { process_.services.settings->Save("QDLReport", "GroupedPrint", "1"); });
  }
  Close(true);
}

bool FormTemplate::TakeExcel() {
  excel_.path.clear();
  return cmbExcelTemplate.ListIndex() < 0 || Fetch(excel_);
}

bool FormTemplate::TakeCrystal() {
  if (cmbCrystalReport.ListIndex() >= 0) return Fetch(crystal_);
  notices_.ShowMessage("خطا", "لطفاً الگويي را انتخاب نماييد!");
  return false;
}

// False if the user has been told why there is no file; the dialog then stays.
bool FormTemplate::Fetch(Choice& choice) {
  const std::int32_t row_number = choice.names.At(choice.names.ListIndex()).data;
  try {
    choice.path = FetchAttachment(process_, notices_, kTemplateFormType, FormID,
                                  static_cast<std::int16_t>(row_number));
  } catch (const Error& error) {
    notices_.ShowMessage("خطا", notices_.ReasonOf(error.Description()));
    return false;
  }
  const TemporaryFiles* const temporary = process_.services.temporary_files.get();
  return !choice.path.empty() || (temporary != nullptr && !temporary->Folder().empty());
}

void FormTemplate::Close(bool accepted) {
  accepted_ = accepted;
  Unload();
}

}  // namespace vorek
