#include "engine/stop_reason.h"

#include "messages/persian_reason.h"
#include "text/utf8.h"

namespace vorek {

std::string StopReasonOf(const ReportState& state) {
  if (state.Denied) return "";  // told, and the state is that of another report
  const std::string report = "گزارش شماره " + std::to_string(state.ReportID);
  if (state.Missing) return report + " وجود ندارد.";
  if (!state.StopReason.empty()) {
    return report + " نمايش داده نشد: " + PersianReason(state.StopReason);
  }
  if (state.ReportID == -1) return "";
  if (state.QueryText.empty() && state.roughSQL.empty()) return report + " متن پرس و جو ندارد.";
  const bool left = !state.ParameterString.empty() && text::Contains(state.roughSQL, "@");
  return left ? report + " نمايش داده نشد: پارامتري در متن پرس و جو مقدار ندارد." : "";
}

}  // namespace vorek
