#ifndef VOREK_SETTINGS_H_
#define VOREK_SETTINGS_H_

#include <string>

namespace vorek {

// The per-user store of small settings, by section and key.
class Settings {
 public:
  virtual ~Settings() = default;

  // The stored text, or `missing` if there is none. Throws Error(kPathAccess) if the store can't be
  // read.
  virtual std::string Get(const std::string& section, const std::string& key,
                          const std::string& missing) const = 0;
  // Throws Error(kPathAccess) if the store can't be written; it then stays as it was.
  virtual void Save(const std::string& section, const std::string& key,
                    const std::string& value) = 0;
};

}  // namespace vorek

#endif  // VOREK_SETTINGS_H_
