#ifndef VOREK_AUTHOR_REPORT_CHECK_H_
#define VOREK_AUTHOR_REPORT_CHECK_H_

#include <cstdint>
#include <vector>

#include "author/finding.h"
#include "platform/xml_element.h"
#include "state/process.h"

namespace vorek {

// Reads the definitions of the reports, of all if the list is empty, without running them: the
// database only looks up what a query names. With a reader for them also their print templates.
// Throws Error if the catalogue can't be read; a number without a report is a finding.
std::vector<Finding> CheckReports(Process& process, const std::vector<std::int32_t>& report_ids,
                                  const XmlReader& read_xml = {});

}  // namespace vorek

#endif  // VOREK_AUTHOR_REPORT_CHECK_H_
