#include "engine/report_head.h"

namespace vorek {

ReportHead HeadOf(const ReportContext& report) {
  const ReportState& state = report.state;
  ReportHead head{state.Title, state.AnswersPut, {}};
  if (head.asked) head.values = state.ConfirmedValues;
  return head;
}

}  // namespace vorek
