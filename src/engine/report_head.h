#ifndef VOREK_ENGINE_REPORT_HEAD_H_
#define VOREK_ENGINE_REPORT_HEAD_H_

#include <string>
#include <vector>

#include "grid/report_context.h"

namespace vorek {

// What stands above a report: its title, and the values that its result was asked for with. None
// are in force before a form of parameters was confirmed, nor where a host gives the parameters.
struct ReportHead {
  std::string title;
  bool asked = false;  // a form was confirmed, maybe without a value
  std::vector<ConfirmedValue> values;
};

ReportHead HeadOf(const ReportContext& report);

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_HEAD_H_
