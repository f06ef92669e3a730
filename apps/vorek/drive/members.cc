#include "drive/members.h"

#include <algorithm>
#include <utility>

#include "engine/report_control.h"
#include "grid/grid.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/form.h"
#include "widgets/property.h"

namespace vorek::drive {
namespace {

using property::Argument;
using property::FromText;
using property::ToText;

std::string TextArgument(const Arguments& arguments, std::size_t index) {
  return index < arguments.size() ? arguments[index] : "";
}

bool FlagArgument(const Arguments& arguments, std::size_t index) {
  return index < arguments.size() && FromText<bool>(arguments[index]);
}

std::vector<Method> GridMethods(Grid& grid) {
  return {{"AddItem",
           [&grid](const Arguments& a) {
             grid.AddItem(TextArgument(a, 0), a.size() > 1 ? Argument(a, 1) : -1);
             return std::string();
           }},
          {"RemoveItem",
           [&grid](const Arguments& a) {
             grid.RemoveItem(Argument(a, 0));
             return std::string();
           }},
          {"Sort",
           [&grid](const Arguments& a) {
             grid.Sort(Argument(a, 0));
             return std::string();
           }},
          {"Clear", [&grid](const Arguments&) {
             grid.Clear();
             return std::string();
           }}};
}

}  // namespace

std::vector<Method> ReportMethods(VorekReport1& report) {
  return {
      {"View",
       [&](const Arguments& a) {
         return ToText(report.View(Argument(a, 0), TextArgument(a, 1), TextArgument(a, 2)));
       }},
      {"Refresh",
       [&](const Arguments& a) {
         return ToText(report.Refresh(FlagArgument(a, 0), TextArgument(a, 1), TextArgument(a, 2)));
       }},
      {"AlignFlexes",
       [&](const Arguments& a) {
         report.AlignFlexes(FlagArgument(a, 0));
         return std::string();
       }},
      {"MakeTree", [&](const Arguments&) { return ToText(report.MakeTree()); }},
      {"isTransposeFlexTree",
       [&](const Arguments&) { return ToText(report.isTransposeFlexTree()); }},
      {"TextMatrix",
       [&](const Arguments& a) { return report.TextMatrix(Argument(a, 0), Argument(a, 1)); }},
      {"Rows", [&](const Arguments&) { return ToText(report.Rows()); }},
      {"Cols", [&](const Arguments&) { return ToText(report.Cols()); }},
      {"Resize",
       [&](const Arguments& a) {
         report.Resize(Argument(a, 0), Argument(a, 1));
         return std::string();
       }},
      {"mnuShowAskForm_Click",
       [&](const Arguments&) {
         report.Impl().mnuShowAskForm_Click();
         return std::string();
       }},
  };
}

std::vector<Method> ControlMethods(Control& control) {
  std::vector<Method> methods;
  if (auto* grid = dynamic_cast<Grid*>(&control)) methods = GridMethods(*grid);
  methods.push_back({"SetFocus", [&control](const Arguments&) {
                       control.SetFocus();
                       return std::string();
                     }});
  methods.push_back({"ZOrder", [&control](const Arguments&) {
                       control.ZOrder();
                       return std::string();
                     }});
  return methods;
}

std::string CallMethod(const std::vector<Method>& methods, std::string_view name,
                       const Arguments& arguments) {
  const auto found = std::find_if(methods.begin(), methods.end(), [&](const Method& method) {
    return text::EqualsIgnoreCase(method.name, name);
  });
  if (found != methods.end()) return found->call(arguments);
  throw Error(ErrorNumber::kItemNotFound, "there is no method " + std::string(name));
}

void ListenToEvents(VorekReport1& report, std::function<void(const std::string&)> tell) {
  ReportEvents& events = report.Events();
  events.DblClick = [tell](bool& cancel) { tell("DblClick " + ToText(cancel)); };
  events.KeyDown = [tell](std::int16_t& code, std::int16_t& shift) {
    tell("KeyDown " + std::to_string(code) + " " + std::to_string(shift));
  };
  events.Cancel = [tell] { tell("Cancel"); };
  events.ViewCelChange = [tell] { tell("ViewCelChange"); };
  events.InvokeClearShow = [tell](std::int32_t& type, std::string& value) {
    tell("InvokeClearShow " + std::to_string(type) + " " + value);
  };
  events.InvokeView = [tell](std::int32_t& type, std::string& condition, std::string& value) {
    tell("InvokeView " + std::to_string(type) + " " + condition + " " + value);
  };
}

}  // namespace vorek::drive
