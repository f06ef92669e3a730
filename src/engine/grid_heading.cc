#include "engine/grid_heading.h"

#include <string>

#include "drill/result_line.h"
#include "engine/report_head.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "vorek/clock.h"

namespace vorek {
namespace {

std::string TwoDigits(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

std::string Moment(const DateTime& now) {
  const std::string day = text::DateText(text::ToPersian({now.year, now.month, now.day}));
  return day + "   " + TwoDigits(now.hour) + ":" + TwoDigits(now.minute);
}

std::string Conditions(ReportContext& report) {
  const ReportHead head = HeadOf(report);
  std::string conditions = head.asked ? InWords(head.values) : "";
  const std::string filter = text::Trim(FilterInForce(report));
  if (filter.empty()) return conditions;
  if (!conditions.empty()) conditions += "، ";
  return conditions + "فيلتر: " + filter;
}

}  // namespace

print::GridHeading HeadingOf(ReportContext& report) {
  return {report.state.Title, Conditions(report), Moment(report.process.clock().Now())};
}

}  // namespace vorek
