#ifndef VOREK_STATE_COLUMN_MAPPING_H_
#define VOREK_STATE_COLUMN_MAPPING_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorek {

// A field of an Access table and the column of the report that fills it.
struct MappedField {
  std::string Description;
  std::string FieldName;
  std::string FieldType;       // the number of the type, 10 for a text
  std::int32_t FieldSize = 0;  // characters
  bool FieldRequired = false;
  std::int32_t ReportColumn = 0;  // from 0 for the grid's column 0, hidden columns not counted
};

using ColumnMappingTable = std::vector<MappedField>;
constexpr std::size_t kMostMappedFields = 101;

}  // namespace vorek

#endif  // VOREK_STATE_COLUMN_MAPPING_H_
