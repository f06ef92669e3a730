#ifndef VOREK_DRILL_RECORD_CONDITION_H_
#define VOREK_DRILL_RECORD_CONDITION_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

namespace vorek {

// A condition that picks the record of a row out of its form's master table: "ID=5", or a
// name=value pair for each column of the primary key, joined by " and ".
struct RecordCondition {
  bool complete = false;  // every column of the key has its value; else text holds the first ones
  std::string text;
};

// By the texts of a row of flxMain. A key column whose cell is blank takes its value from
// CallerStringValue. Throws what the database throws, and Error(kOverflow) for a number beyond 15
// digits.
RecordCondition MakeRecordCondition(ReportContext& report, std::int32_t form_type,
                                    std::int32_t row);

}  // namespace vorek

#endif  // VOREK_DRILL_RECORD_CONDITION_H_
