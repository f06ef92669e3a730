#ifndef VOREK_ADAPTERS_ACCESS_SCHEMA_H_
#define VOREK_ADAPTERS_ACCESS_SCHEMA_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorek::jet {

// What a file's catalogue and its properties say.
struct FieldProperties {
  std::string name;
  std::string description;
  std::string default_value;
  std::string validation_rule;
  bool required = false;
  bool takes_empty_text = true;
};

struct TableProperties {
  std::uint32_t page = 0;  // of the definition
  std::string validation_rule;
  std::vector<FieldProperties> fields;
};

std::vector<std::string> ReadTables(const std::string& path);
// Throws Error for a table that isn't there or lies in another file.
TableProperties ReadTable(const std::string& path, const std::string& table);

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_SCHEMA_H_
