#ifndef VOREK_COMPONENTS_H_
#define VOREK_COMPONENTS_H_

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace vorek {

// A value that a component is given: a whole number or a text.
using ComponentValue = std::variant<std::int32_t, std::string>;

// A form of the surrounding system, known by its name alone and called late, by the names of its
// members. A form is given UserID, Number (where its name carries one), PositionID, EmployeeID and
// OleConnectionString, in this order; then View with the text of the row's key, or ClearShow.
class Component {
 public:
  virtual ~Component() = default;

  // Sets a property, calls a method. What they throw as Error is ignored: a form that fails tells
  // its user by itself.
  virtual void Set(const std::string& property, const ComponentValue& value) = 0;
  virtual void Call(const std::string& method, const std::vector<ComponentValue>& arguments) = 0;
};

// Makes components. One that is made lives until its method has returned; whether its window stays
// is its own business.
class Components {
 public:
  virtual ~Components() = default;

  // form_type is the number of the form (tblVorekFormType) that the component is to show. Throws
  // Error(kNoComponent), with the reason, if there is no component of that name.
  virtual std::unique_ptr<Component> Create(const std::string& prog_id, std::int32_t form_type) = 0;
  // Called once before a component that wasn't there is asked for again, with the name of its file
  // ("comSale.comGoods.dll"): where components can be made known to the system, this is the time.
  virtual void Register(const std::string& file_name) = 0;
};

// Components that a host makes itself.
class ComponentFactories : public Components {
 public:
  using Factory = std::function<std::unique_ptr<Component>(std::int32_t form_type)>;

  // Names are compared without regard to case; a later factory takes the place of an earlier one.
  void Add(const std::string& prog_id, Factory factory);
  // Who is asked for a name that has no factory here; null for nobody.
  void SetNext(std::shared_ptr<Components> next) { next_ = std::move(next); }

  std::unique_ptr<Component> Create(const std::string& prog_id, std::int32_t form_type) override;
  void Register(const std::string& file_name) override;

 private:
  std::map<std::string, Factory> factories_;  // by name in small letters
  std::shared_ptr<Components> next_;
};

// Shared libraries in a folder, the component "comSale.comGoods" in comSale.comGoods.so, with the
// interface of form_plugin.h. Registering one that wasn't there looks for it in the subfolder
// System. A name never leads out of the folder: one with a path separator or ".." isn't there.
// tell gets the reason, in Persian, whenever a library that is there can't be used; none for
// nobody. Part of the system component.
std::shared_ptr<Components> ComponentsInFolder(const std::string& folder,
                                               std::function<void(const std::string&)> tell = {});

}  // namespace vorek

#endif  // VOREK_COMPONENTS_H_
