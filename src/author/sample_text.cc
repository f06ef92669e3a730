#include "author/sample_text.h"

#include <algorithm>
#include <iterator>

#include "parameters/parameter_text.h"
#include "text/utf8.h"

namespace vorek {
namespace {

struct SampleValue {
  std::int32_t control_type;
  const char* query;
  const char* display;
};
constexpr SampleValue kSamples[] = {
    {1, "20260321", "1405/01/01"},
    {3, "510", "08:30"},
    {10, "510", "8:30"},
    {11, "1234", "1/234"},
    {13, "FormTypeID=901&FormID=5", "FormTypeID=901:FormID=5"},
    {1001, "", "x"},
    {1007, "(1)", "1"},
};

}  // namespace

ParameterReading SampleReading(std::int32_t control_type) {
  const auto* const found =
      std::find_if(std::begin(kSamples), std::end(kSamples),
                   [&](const SampleValue& row) { return row.control_type == control_type; });
  if (found == std::end(kSamples)) return {"1", "1"};
  return {found->query, found->display};
}

text::TracedText SampleParameters(const ReportDefinition& report) {
  text::TracedText traced(report.Query());
  // A call of a procedure has no conditions.
  const bool call = text::StartsWithIgnoreCase(report.Query(), "exec ");
  // A longer number before its head: 12 before 1.
  for (auto parameter = report.parameters.rbegin(); parameter != report.parameters.rend();
       ++parameter) {
    const ParameterRow& row = parameter->row;
    const std::string literal = Literal(row.type, SampleReading(row.control_type));
    traced.ReplaceAll(LiteralReplacements(row.Marker(), literal, call ? "" : kRestricts));
  }
  return traced;
}

text::TracedText SampleText(const ReportDefinition& report) {
  text::TracedText traced = SampleParameters(report);
  traced.ReplaceAll(TokenReplacements({"'1405/01/01'", "1", "1", "'10:30'", "1"}));
  traced.ReplaceAll({{" as ''", ""}});
  return traced;
}

}  // namespace vorek
