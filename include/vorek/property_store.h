#ifndef VOREK_PROPERTY_STORE_H_
#define VOREK_PROPERTY_STORE_H_

#include <string>

namespace vorek {

// A host's store of a control's properties, by key; values are texts ("True" and "False" for
// Booleans).
class PropertyStore {
 public:
  virtual ~PropertyStore() = default;

  // The stored value, or the default if there is none.
  virtual std::string ReadProperty(const std::string& key, const std::string& default_value) = 0;
  // Stores the value; one that equals the default may be left out.
  virtual void WriteProperty(const std::string& key, const std::string& value,
                             const std::string& default_value) = 0;
  // All properties have been written: a store that keeps them in a file writes it now, at once.
  virtual void Commit() {}
};

}  // namespace vorek

#endif  // VOREK_PROPERTY_STORE_H_
