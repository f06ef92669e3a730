#ifndef VOREK_APPS_VOREK_DRIVE_MEMBERS_H_
#define VOREK_APPS_VOREK_DRIVE_MEMBERS_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/report.h"
#include "widgets/control.h"

namespace vorek::drive {

using Arguments = std::vector<std::string>;

// A public method as `call` reaches it. The result is printed; a method without one gives "".
struct Method {
  std::string_view name;
  std::function<std::string(const Arguments&)> call;
};

// Something beside the controls that a script reaches by name. Throws Error(kItemNotFound) for a
// member that it doesn't have.
class Object {
 public:
  virtual ~Object() = default;
  virtual std::string Get(const std::string& member, const Arguments& arguments) = 0;
  virtual void Set(const std::string& member, const Arguments& arguments,
                   const std::string& value) = 0;
  virtual std::string Call(const std::string& member, const Arguments& arguments) = 0;
};

// The methods of the report control, and those of any control.
std::vector<Method> ReportMethods(VorekReport1& report);
std::vector<Method> ControlMethods(Control& control);

// Finds a method by its name in any case and calls it. Throws Error(kItemNotFound).
std::string CallMethod(const std::vector<Method>& methods, std::string_view name,
                       const Arguments& arguments);

// Writes each event of the control as a line to `tell`.
void ListenToEvents(VorekReport1& report, const std::function<void(const std::string&)>& tell);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_MEMBERS_H_
