#ifndef VOREK_ENGINE_REPORT_CHECK_H_
#define VOREK_ENGINE_REPORT_CHECK_H_

#include <cstdint>
#include <string>
#include <vector>

#include "platform/xml_element.h"
#include "state/process.h"

namespace vorek {

// Something in a report's definition that goes wrong, or not as its author will have meant.
struct Finding {
  bool error = false;  // the report fails, stops without a word, or shows what it must not
  std::int32_t report_id = 0;
  std::string field;  // the column of the catalogue, or the row in it
  std::string what;
  std::string why;  // what comes of it
};

// Reads the definitions of the reports, of all if the list is empty, without running them, and with
// a reader for them their print templates. Throws Error if the catalogue can't be read; a number
// without a report is a finding.
std::vector<Finding> CheckReports(Process& process, const std::vector<std::int32_t>& report_ids,
                                  const XmlReader& read_xml = {});

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_CHECK_H_
