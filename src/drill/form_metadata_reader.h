#ifndef VOREK_DRILL_FORM_METADATA_READER_H_
#define VOREK_DRILL_FORM_METADATA_READER_H_

#include <string>
#include <vector>

#include "grid/report_context.h"

// Reads what FormMetadata keeps. Throws what the database throws; nothing is then kept.
namespace vorek {

// Also sets SQLQuery of the state. A report that isn't in the catalogue has an empty query.
const StoredQuery& StoredQueryOf(ReportContext& report);

const std::vector<KeyField>& KeyFieldsOf(ReportContext& report, std::int32_t form_type);

// The master table of a form that has a component, "" for any other one.
const std::string& MasterTableOf(ReportContext& report, std::int32_t form_type);

// The table of the form type whose ".ID" stands in the select list, else the last one of the form
// type; "" for a form type without tables.
std::string FormTableOf(ReportContext& report, std::int32_t form_type,
                        const std::string& select_list);

}  // namespace vorek

#endif  // VOREK_DRILL_FORM_METADATA_READER_H_
