// A form of goods in a shared library: a window with what is sold of one of them. The window stays
// when the form's handle goes, and closes by itself.

#include <vorek/error.h>
#include <vorek/form_plugin.h>
#include <vorek/qt.h>
#include <vorek/sqlite.h>
#include <vorek/system.h>

#include <QVBoxLayout>
#include <cstring>
#include <exception>
#include <string>

struct VorekForm {
  int user = -1;
  int position = -1;
  std::string connection;
};

namespace {

// Any report may lend its place; its query is replaced.
constexpr int kLent = 102;

std::string QueryFor(int goods) {
  return "Select tblGoods.Name as [نام كالا], tblSaleInvoice.FarsiInvoiceDate as [تاريخ], "
         "tblSaleInvoiceDetail.Quantity as [مقدار], tblSaleInvoiceDetail.LineValue as [مبلغ] from "
         "tblGoods left join tblSaleInvoiceDetail on tblSaleInvoiceDetail.GoodsID = tblGoods.ID "
         "left join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID Where "
         "tblGoods.ID = " +
         std::to_string(goods) + " Order By tblSaleInvoice.FarsiInvoiceDate";
}

void ShowGoods(const VorekForm& form, int goods) {
  vorek::WorldOptions options;
  options.providers = {vorek::SqliteProvider()};
  vorek::AddQtServices(options);
  vorek::AddSystemServices(options);
  auto* const window = new QWidget;
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(QString("كالا %1").arg(goods));
  window->setLayoutDirection(Qt::RightToLeft);
  auto* const report = new vorek::VorekReportWidget(std::move(options), window);
  auto* const layout = new QVBoxLayout(window);
  layout->addWidget(report);
  window->resize(700, 400);
  window->show();
  report->SetUserID(form.user);
  report->SetPositionID(form.position);
  report->SetOleConnectionString(QString::fromStdString(form.connection));
  report->Report().SetUseThisQuery(QueryFor(goods));
  report->View(kLent);
}

VorekForm* Create(const char* prog_id, int32_t) {
  return std::strcmp(prog_id, "comSale.comGoods") == 0 ? new VorekForm : nullptr;
}

void Destroy(VorekForm* form) { delete form; }

int SetNumber(VorekForm* form, const char* property, int32_t value) {
  if (std::strcmp(property, "UserID") == 0) form->user = value;
  if (std::strcmp(property, "PositionID") == 0) form->position = value;
  return 0;
}

int SetText(VorekForm* form, const char* property, const char* value) {
  if (std::strcmp(property, "OleConnectionString") == 0) form->connection = value;
  return 0;
}

// No exception may leave the library.
int Call(VorekForm* form, const char* method, const char* argument) {
  try {
    if (std::strcmp(method, "View") != 0 || argument == nullptr) return 1;
    ShowGoods(*form, std::stoi(argument));
    return 0;
  } catch (const std::exception&) {
    return 2;
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) const VorekFormPlugin* vorek_form_plugin(void) {
  static const VorekFormPlugin plugin = {
      VOREK_FORM_PLUGIN_VERSION, Create, Destroy, SetNumber, SetText, Call};
  return &plugin;
}
