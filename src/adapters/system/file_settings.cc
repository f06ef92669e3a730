#include "adapters/system/file_settings.h"

#include "adapters/system/settings_folder.h"
#include "vorek/system.h"

namespace vorek {

text::Sections FileSettings::Read() const {
  return files_->Exists(path_) ? text::ParseKeyValues(files_->Read(path_)) : text::Sections{};
}

std::string FileSettings::Get(const std::string& section, const std::string& key,
                              const std::string& missing) const {
  const text::Sections sections = Read();
  const auto values = sections.find(section);
  if (values == sections.end()) return missing;
  const auto value = values->second.find(key);
  return value == values->second.end() ? missing : value->second;
}

void FileSettings::Save(const std::string& section, const std::string& key,
                        const std::string& value) {
  SaveAll({{section, {{key, value}}}});
}

void FileSettings::SaveAll(const text::Sections& changed) {
  files_->MakeFoldersFor(path_);
  const std::unique_ptr<FileLock> lock = files_->Lock(path_);
  text::Sections sections = Read();
  for (const auto& [section, values] : changed) {
    for (const auto& [key, value] : values) sections[section][key] = value;
  }
  files_->WritePrivate(path_, text::FormatKeyValues(sections));
}

std::shared_ptr<Settings> MachineSettings() {
  const std::string folder = SettingsFolder();
  if (folder.empty()) return nullptr;
  return std::make_shared<FileSettings>(MachineFiles(), folder + "/vorek/settings.conf");
}

std::unique_ptr<PropertyStore> PropertiesInFile(const std::string& path) {
  return std::make_unique<FilePropertyStore>(MachineFiles(), path);
}

}  // namespace vorek
