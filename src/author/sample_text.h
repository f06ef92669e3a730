#ifndef VOREK_AUTHOR_SAMPLE_TEXT_H_
#define VOREK_AUTHOR_SAMPLE_TEXT_H_

#include "author/report_definition.h"
#include "engine/query_text.h"
#include "parameters/parameter_kind.h"
#include "text/replacement.h"

namespace vorek {

// A value that a person might enter into a field of that kind.
ParameterReading SampleReading(std::int32_t control_type);

// The query as a confirmed form makes it, with such a value for each parameter. A marker without a
// parameter stays.
text::TracedText SampleParameters(const ReportDefinition& report);

// The same with values of the tokens, as it runs.
text::TracedText SampleText(const ReportDefinition& report);

}  // namespace vorek

#endif  // VOREK_AUTHOR_SAMPLE_TEXT_H_
