#include "drill/form_component.h"

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// Null if nobody knows the component.
std::unique_ptr<Component> Create(Components* components, const std::string& prog_id,
                                  std::int32_t form_type) {
  std::unique_ptr<Component> made;
  if (components != nullptr) IgnoreErrors([&] { made = components->Create(prog_id, form_type); });
  return made;
}

void GiveIdentity(ReportContext& report, Component& form, std::int32_t number) {
  const MainModule& main = report.process.main;
  const auto set = [&](const char* property, const ComponentValue& value) {
    IgnoreErrors([&] { form.Set(property, value); });
  };
  set("UserID", main.GlobalUserID);
  if (number >= 0) set("Number", number);
  set("PositionID", main.GlobalPositionID);
  set("EmployeeID", main.GlobalEmployeeID);
  set("OleConnectionString", report.process.dten().cnn.ConnectionString());
}

}  // namespace

ComponentName ParseComponentName(const std::string& file_name) {
  constexpr std::size_t kExtension = 4;  // characters
  ComponentName name{file_name, "", -1};
  if (text::Contains(file_name, "#")) {
    name.number = text::ToInt32(text::NumericPrefix(text::Right(file_name, 1)));
    name.file = text::Left(file_name, text::Length(file_name) - 2);
  }
  const std::size_t length = text::Length(name.file);
  name.prog_id = text::Left(name.file, length > kExtension ? length - kExtension : 0);
  return name;
}

std::unique_ptr<Component> MakeFormComponent(ReportContext& report, const std::string& file_name,
                                             std::int32_t form_type) {
  const ComponentName name = ParseComponentName(file_name);
  Components* const components = report.process.services.components.get();
  std::unique_ptr<Component> form = Create(components, name.prog_id, form_type);
  if (form == nullptr && components != nullptr) {
    IgnoreErrors([&] { components->Register(name.file); });
    form = Create(components, name.prog_id, form_type);
  }
  if (form == nullptr) {
    report.notices.ShowMessage("",
                               "شما مجاز به انجام اين عمل نيستيد. براي اطلاعات بيشتر به نگهدارنده "
                               "سيستم مراجعه نماييد.");
    return nullptr;
  }
  GiveIdentity(report, *form, name.number);
  return form;
}

}  // namespace vorek
