#include "engine/stop_reason.h"

#include "messages/persian_reason.h"

namespace vorek {

std::string StopReasonOf(const ReportState& state) {
  const std::string report = "گزارش شماره " + std::to_string(state.ReportID);
  if (state.Missing) return report + " وجود ندارد.";
  if (!state.StopReason.empty()) {
    return report + " نمايش داده نشد: " + PersianReason(state.StopReason);
  }
  const bool named = state.ReportID != -1;
  return named && state.QueryText.empty() ? report + " متن پرس و جو ندارد." : "";
}

}  // namespace vorek
