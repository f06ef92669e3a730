#include "drive/members.h"

#include <algorithm>
#include <utility>

#include "drive/by_user.h"
#include "engine/report_control.h"
#include "grid/grid.h"
#include "state/file_dialogs.h"
#include "text/key_list.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/shown_control.h"
#include "vorek/system.h"
#include "widgets/form.h"
#include "widgets/property.h"
#include "widgets/vorek_date.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"
#include "widgets/vorek_time.h"

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

// A method without arguments and result.
template <typename Action>
Method Plain(std::string_view name, Action action) {
  return {name, [action](const Arguments&) {
            action();
            return std::string();
          }};
}

// As its user does.
void ChooseLine(ListControl& list, std::int32_t line) {
  list.At(line);
  const UserTarget target(list);
  MustBeDone(ChooseEntry(target.root, target.path, line), {"choose", list.PathName()});
}

std::vector<Method> ListMethods(ListControl& list) {
  std::vector<Method> methods = {Plain("setNull", [&list] { list.setNull(); }),
                                 Plain("FillList", [&list] { list.FillList(); }),
                                 {"Search",
                                  [&list](const Arguments& a) {
                                    list.Search(TextArgument(a, 0));
                                    return ToText(list.ListCount());
                                  }},
                                 {"Choose", [&list](const Arguments& a) {
                                    ChooseLine(list, Argument(a, 0));
                                    return std::string();
                                  }}};
  if (auto* const selector = dynamic_cast<VorekSelector*>(&list)) {
    methods.push_back({"FillTree", [selector](const Arguments& a) {
                         selector->FillTree(Argument(a, 0));
                         return ToText(selector->ListCount());
                       }});
  }
  if (auto* const multiple = dynamic_cast<VorekMultiSelect*>(&list)) {
    methods.push_back(Plain("SelectAll", [multiple] { multiple->SelectAll(); }));
  }
  return methods;
}

// The methods of the kind of control that it is.
std::vector<Method> KindMethods(Control& control) {
  if (auto* const grid = dynamic_cast<Grid*>(&control)) return GridMethods(*grid);
  if (auto* const list = dynamic_cast<ListControl*>(&control)) return ListMethods(*list);
  if (auto* const date = dynamic_cast<VorekDate*>(&control)) {
    return {Plain("Clear", [date] { date->Clear(); })};
  }
  if (auto* const timer = dynamic_cast<Timer*>(&control)) {
    return {Plain("Elapse", [timer] { timer->Elapse(); })};
  }
  if (auto* const minutes = dynamic_cast<MinutesControl*>(&control)) {
    return {Plain("Clear", [minutes] { minutes->Clear(); })};
  }
  return {};
}

}  // namespace

// NOLINTNEXTLINE(readability-function-size): a table, with an entry for each method
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
      {"Clear",
       [&](const Arguments&) {
         report.Clear();
         return std::string();
       }},
      {"ObjectEvent",
       [&](const Arguments& a) {
         report.ObjectEvent(TextArgument(a, 0));
         return std::string();
       }},
      {"setNull", [&](const Arguments&) { return ToText(report.setNull()); }},
      {"DropUnusedrows", [&](const Arguments&) { return ToText(report.DropUnusedrows()); }},
      {"ShowWithParams",
       [&](const Arguments& a) { return ToText(report.ShowWithParams(Argument(a, 0))); }},
      {"ViewRepotRelations",
       [&](const Arguments& a) {
         return ToText(report.ViewRepotRelations(Argument(a, 0), TextArgument(a, 1)));
       }},
      {"ViewReportWithoutParameters",
       [&](const Arguments& a) {
         std::int32_t called = Argument(a, 0);
         std::string caller = TextArgument(a, 1);
         std::string title = TextArgument(a, 2);
         report.ViewReportWithoutParameters(called, caller, title);
         return std::string();
       }},
      {"SortflxMain",
       [&](const Arguments& a) {
         report.SortflxMain(Argument(a, 0));
         return std::string();
       }},
      {"MakeFlexMerged",
       [&](const Arguments&) {
         report.MakeFlexMerged();
         return std::string();
       }},
      {"SetSharedFilters", [&](const Arguments&) { return ToText(report.SetSharedFilters()); }},
      {"mnuAvg_Click",
       [&](const Arguments&) {
         report.mnuAvg_Click();
         return std::string();
       }},
      {"InitProperties",
       [&](const Arguments&) {
         report.InitProperties();
         return std::string();
       }},
      {"ReadProperties",
       [&](const Arguments& a) {
         report.ReadProperties(*PropertiesInFile(TextArgument(a, 0)));
         return std::string();
       }},
      {"WriteProperties",
       [&](const Arguments& a) {
         report.WriteProperties(*PropertiesInFile(TextArgument(a, 0)));
         return std::string();
       }},
      {"getParameterValue",
       [&](const Arguments& a) {
         return getParameterValue(TextArgument(a, 0), TextArgument(a, 1));
       }},
      {"SaveFileDialog",
       [&](const Arguments& a) {
         std::string name = TextArgument(a, 0);
         const bool chosen = SaveFileDialog(report.Impl().world.process, name, TextArgument(a, 1));
         return ToText(chosen) + " " + name;
       }},
      {"OpenFileDialog",
       [&](const Arguments& a) {
         std::string name = TextArgument(a, 0);
         ReportControl& control = report.Impl();
         const bool chosen =
             OpenFileDialog(control.world.process, control.world.messages, name, TextArgument(a, 1),
                            TextArgument(a, 2), TextArgument(a, 3));
         return ToText(chosen) + " " + name;
       }},
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
  std::vector<Method> methods = KindMethods(control);
  methods.push_back(Plain("SetFocus", [&control] { control.SetFocus(); }));
  methods.push_back(Plain("ZOrder", [&control] { control.ZOrder(); }));
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

void ListenToEvents(VorekReport1& report, const std::function<void(const std::string&)>& tell) {
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
  events.CloseParent = [tell] { tell("CloseParent"); };
  events.ComeToFront = [tell] { tell("ComeToFront"); };
  events.AddClick = [tell] { tell("AddClick"); };
  events.EditClick = [tell] { tell("EditClick"); };
  events.DeleteClick = [tell] { tell("DeleteClick"); };
}

}  // namespace vorek::drive
