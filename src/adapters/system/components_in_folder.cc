#include <dlfcn.h>

#include <filesystem>
#include <utility>

#include "vorek/components.h"
#include "vorek/error.h"
#include "vorek/form_plugin.h"

namespace vorek {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kNoComponent, reason);
}

// A library that a form may come from, held as long as one of its forms, or the folder, needs it.
class Library {
 public:
  // Throws Error(kNoComponent).
  explicit Library(const std::string& path) : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) Refuse(path + " باز نشد: " + LastFailure());
    void* const entry = dlsym(handle_, VOREK_FORM_PLUGIN_ENTRY);
    const char* fault = nullptr;
    if (entry == nullptr) {
      fault = " فرم نيست: تابع " VOREK_FORM_PLUGIN_ENTRY " را ندارد.";
    } else {
      plugin_ = reinterpret_cast<VorekFormPluginEntry>(entry)();
      if (plugin_ == nullptr || plugin_->version != VOREK_FORM_PLUGIN_VERSION) {
        fault = " براي نسخه ديگري ساخته شده است.";
      }
    }
    if (fault == nullptr) return;
    dlclose(handle_);
    Refuse(path + fault);
  }
  // A window of the library may still be open: its code stays.
  ~Library() = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  const VorekFormPlugin& Plugin() const { return *plugin_; }

 private:
  static std::string LastFailure() {
    const char* const text = dlerror();
    return text == nullptr ? "" : text;
  }

  void* handle_;
  const VorekFormPlugin* plugin_ = nullptr;
};

class PluginForm : public Component {
 public:
  PluginForm(const VorekFormPlugin& plugin, VorekForm* form) : plugin_(plugin), form_(form) {}
  ~PluginForm() override { plugin_.destroy(form_); }
  PluginForm(const PluginForm&) = delete;
  PluginForm& operator=(const PluginForm&) = delete;

  void Set(const std::string& property, const ComponentValue& value) override {
    const int answer =
        std::holds_alternative<std::string>(value)
            ? plugin_.set_text(form_, property.c_str(), std::get<std::string>(value).c_str())
            : plugin_.set_number(form_, property.c_str(), std::get<std::int32_t>(value));
    Check(property, answer);
  }
  void Call(const std::string& method, const std::vector<ComponentValue>& arguments) override {
    const bool has_text = !arguments.empty() && std::holds_alternative<std::string>(arguments[0]);
    Check(method, plugin_.call(form_, method.c_str(),
                               has_text ? std::get<std::string>(arguments[0]).c_str() : nullptr));
  }

 private:
  static void Check(const std::string& member, int answer) {
    if (answer != 0) throw Error(ErrorNumber::kInvalidCall, member + ": " + std::to_string(answer));
  }

  const VorekFormPlugin& plugin_;
  VorekForm* form_;
};

class FolderComponents : public Components {
 public:
  FolderComponents(std::filesystem::path folder, std::function<void(const std::string&)> tell)
      : folder_(std::move(folder)), tell_(std::move(tell)) {}

  std::unique_ptr<Component> Create(const std::string& prog_id, std::int32_t form_type) override {
    try {
      const VorekFormPlugin& plugin = LibraryOf(prog_id).Plugin();
      VorekForm* const form = plugin.create(prog_id.c_str(), form_type);
      if (form == nullptr) Refuse("فرم " + prog_id + " در کتابخانه خودش نيست.");
      return std::make_unique<PluginForm>(plugin, form);
    } catch (const Error& error) {
      if (tell_) tell_(error.Description());
      throw;
    }
  }

  // A library that wasn't there may lie in the subfolder.
  void Register(const std::string&) override { places_ = {folder_ / "System", folder_}; }

 private:
  static bool IsName(const std::string& prog_id) {
    return !prog_id.empty() && prog_id.find_first_of("/\\") == std::string::npos &&
           prog_id.find("..") == std::string::npos && prog_id.find('\0') == std::string::npos;
  }

  const Library& LibraryOf(const std::string& prog_id) {
    const auto open = libraries_.find(prog_id);
    if (open != libraries_.end()) return *open->second;
    if (!IsName(prog_id)) Refuse("نام فرم پذيرفتني نيست: " + prog_id);
    for (const std::filesystem::path& place : places_) {
      const std::filesystem::path path = place / (prog_id + ".so");
      std::error_code ignored;
      if (!std::filesystem::is_regular_file(path, ignored)) continue;
      return *(libraries_[prog_id] = std::make_unique<Library>(path.string()));
    }
    Refuse("فرم " + prog_id + " در پوشه " + folder_.string() + " نيست.");
  }

  std::filesystem::path folder_;
  std::function<void(const std::string&)> tell_;
  std::vector<std::filesystem::path> places_{folder_};
  std::map<std::string, std::unique_ptr<Library>> libraries_;  // by name
};

}  // namespace

std::shared_ptr<Components> ComponentsInFolder(const std::string& folder,
                                               std::function<void(const std::string&)> tell) {
  return std::make_shared<FolderComponents>(std::filesystem::absolute(folder), std::move(tell));
}

}  // namespace vorek
