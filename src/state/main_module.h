#ifndef VOREK_STATE_MAIN_MODULE_H_
#define VOREK_STATE_MAIN_MODULE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "state/column_layout.h"
#include "state/column_mapping.h"

namespace vorek {

// The last source of a report that ran.
struct CachedReport {
  std::int32_t report_id = -1;
  std::string source;
  std::int16_t field_count = 0;
};

// A parameter of the last confirmed form, with the text that a person reads.
struct ParameterValue {
  std::int32_t parameter_id = 0;
  std::string display_value;
};

// The globals that all controls of a world share. Each View overwrites those of the user.
struct MainModule {
  std::string ConnectionText;
  bool SystemParameter123 = false;
  std::int32_t GlobalUserID = -1;
  std::int32_t GlobalPositionID = -1;
  std::int32_t GlobalEmployeeID = -1;
  std::int32_t GlobalBranchID = -1;
  std::string UserFullName;
  std::string EmployeeFullName;
  std::string PositionName;
  std::string KeyboardLayoutName;
  ColumnLayoutTable ColumnLayouts;     // of flxMain
  ColumnLayoutTable TransposeLayouts;  // of flxTranspose
  std::vector<CachedReport> ReportCache;
  std::vector<ParameterValue> ParameterValues;
  ColumnMappingTable ColumnMapping;  // of the last dialog for an Access file
  std::int32_t LastAskReportID = -1;
  std::string DialogPath;
  std::int32_t ConfirmAnswer = 0;  // 1 yes, 2 no, 0 closed: left by the last question
};

}  // namespace vorek

#endif  // VOREK_STATE_MAIN_MODULE_H_
