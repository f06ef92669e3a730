#include "engine/shared_helpers.h"

#include <algorithm>
#include <utility>

#include "catalog/report_row.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::vector<CachedReport>::iterator FindCached(MainModule& main, std::int32_t report_id) {
  return std::find_if(main.ReportCache.begin(), main.ReportCache.end(),
                      [&](const CachedReport& report) { return report.report_id == report_id; });
}

// Runs `read` on the row of that number, if there is one.
template <typename Read>
void WithRow(Recordset& slot, const std::string& table, std::int32_t id, const Read& read) {
  OpenSlot(slot, "Select * from " + table + " Where ID = " + std::to_string(id));
  if (slot.RecordCount() > 0) read();
  slot.Close();
}

}  // namespace

std::string Max(const std::string& a, const std::string& b) {
  return text::NumericPrefix(b) >= text::NumericPrefix(a) ? b : a;
}

bool SelectComboItem(ComboBox& combo, std::int32_t value) {
  for (std::int32_t line = 0; line < combo.ListCount(); ++line) {
    if (combo.At(line).data != value) continue;
    combo.SetListIndex(line);
    return true;
  }
  return false;
}

void LoadUserInfo(Process& process) {
  MainModule& main = process.main;
  Recordset& slot = process.dten().rssqlGeneral1;
  main.GlobalBranchID = -1;
  WithRow(slot, "tblUser", main.GlobalUserID, [&] {
    main.UserFullName = TextOf(slot, "FullName");
    main.GlobalBranchID = NumberOf(slot, "BranchID");
  });
  WithRow(slot, "tblEmployee", main.GlobalEmployeeID, [&] {
    main.EmployeeFullName = TextOf(slot, "FirstName") + "  " + TextOf(slot, "SureName");
  });
  WithRow(slot, "tblPosition", main.GlobalPositionID,
          [&] { main.PositionName = TextOf(slot, "Name"); });
}

void CacheReport(MainModule& main, std::int32_t report_id, const std::string& source,
                 std::int16_t field_count) {
  const auto found = FindCached(main, report_id);
  if (found == main.ReportCache.end()) {
    main.ReportCache.push_back({report_id, source, field_count});
  } else {
    *found = {report_id, source, field_count};
  }
}

void UncacheReport(MainModule& main, std::int32_t report_id) {
  const auto found = FindCached(main, report_id);
  if (found == main.ReportCache.end()) return;
  if (found != main.ReportCache.end() - 1) *found = std::move(main.ReportCache.back());
  main.ReportCache.pop_back();
}

}  // namespace vorek
