#ifndef VOREK_ADAPTERS_SYSTEM_FILE_SETTINGS_H_
#define VOREK_ADAPTERS_SYSTEM_FILE_SETTINGS_H_

#include <memory>
#include <string>
#include <utility>

#include "text/key_value_file.h"
#include "vorek/files.h"
#include "vorek/property_store.h"
#include "vorek/settings.h"

namespace vorek {

// Settings in a text file that its owner alone may read. It is read at each question, so that
// programs may share it, and written whole, beside the old one and by a rename, under a lock that
// keeps what others write at the same time.
class FileSettings : public Settings {
 public:
  FileSettings(std::shared_ptr<Files> files, std::string path)
      : files_(std::move(files)), path_(std::move(path)) {}

  std::string Get(const std::string& section, const std::string& key,
                  const std::string& missing) const override;
  void Save(const std::string& section, const std::string& key, const std::string& value) override;
  // Several values in one write.
  void SaveAll(const text::Sections& changed);

 private:
  text::Sections Read() const;

  std::shared_ptr<Files> files_;
  std::string path_;
};

// Properties in a text file, a line "key=value" each, written by Commit.
class FilePropertyStore : public PropertyStore {
 public:
  FilePropertyStore(std::shared_ptr<Files> files, std::string path)
      : settings_(std::move(files), std::move(path)) {}

  std::string ReadProperty(const std::string& key, const std::string& default_value) override {
    return settings_.Get("", key, default_value);
  }
  void WriteProperty(const std::string& key, const std::string& value,
                     const std::string& /*default_value*/) override {
    written_[""][key] = value;
  }
  void Commit() override {
    settings_.SaveAll(written_);
    written_.clear();
  }

 private:
  FileSettings settings_;
  text::Sections written_;
};

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_FILE_SETTINGS_H_
