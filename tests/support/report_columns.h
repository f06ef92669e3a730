#ifndef VOREK_TESTS_SUPPORT_REPORT_COLUMNS_H_
#define VOREK_TESTS_SUPPORT_REPORT_COLUMNS_H_

#include <vector>

#include "platform/memory_database.h"
#include "vorek/field_type.h"

namespace vorek {

// The columns of a report's own row, for a catalogue in memory.
inline const std::vector<MemoryColumn> kReportColumns = {{"ID", kInteger},
                                                         {"Title", kVarWChar},
                                                         {"Notes", kVarWChar},
                                                         {"CreateDate", kDBTimeStamp},
                                                         {"SQLQuery", kVarWChar},
                                                         {"MakeTree", kInteger},
                                                         {"MakeTranspose", kBoolean},
                                                         {"MakeMerge", kBoolean},
                                                         {"MakeSecure", kBoolean},
                                                         {"ShowDiagram", kBoolean},
                                                         {"FormTypeID", kInteger},
                                                         {"FontSize", kInteger},
                                                         {"ReportRowHeight", kInteger}};

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_REPORT_COLUMNS_H_
