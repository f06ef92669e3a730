#ifndef VOREK_APPS_VOREK_DRIVE_SCRIPT_COMPONENT_H_
#define VOREK_APPS_VOREK_DRIVE_SCRIPT_COMPONENT_H_

#include <functional>
#include <string>
#include <vector>

#include "vorek/components.h"

namespace vorek::drive {

// A form that says what it is told: a line "component PROGID MEMBER "VALUE"" each.
class ScriptComponent : public Component {
 public:
  ScriptComponent(std::string prog_id, std::function<void(const std::string&)> print)
      : prog_id_(std::move(prog_id)), print_(std::move(print)) {}

  void Set(const std::string& property, const ComponentValue& value) override;
  void Call(const std::string& method, const std::vector<ComponentValue>& arguments) override;

 private:
  std::string prog_id_;
  std::function<void(const std::string&)> print_;
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_SCRIPT_COMPONENT_H_
