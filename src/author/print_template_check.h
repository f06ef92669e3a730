#ifndef VOREK_AUTHOR_PRINT_TEMPLATE_CHECK_H_
#define VOREK_AUTHOR_PRINT_TEMPLATE_CHECK_H_

#include <cstdint>
#include <vector>

#include "author/finding.h"
#include "platform/xml_element.h"
#include "state/process.h"

namespace vorek {

// Reads the print templates that are stored with a report, without printing, and adds what is wrong
// with them. A database without attachments has none.
void CheckPrintTemplates(Process& process, std::int32_t report_id, const XmlReader& read_xml,
                         std::vector<Finding>& findings);

}  // namespace vorek

#endif  // VOREK_AUTHOR_PRINT_TEMPLATE_CHECK_H_
