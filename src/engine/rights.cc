#include "engine/rights.h"

#include "catalog/data_session.h"

namespace vorek {
namespace {

bool HasRows(Recordset& slot, const std::string& query) {
  OpenSlot(slot, query);
  const bool rows = slot.RecordCount() > 0;
  slot.Close();
  return rows;
}

}  // namespace

bool HasReportRight(Process& process, std::int32_t report_id, std::int32_t user_id) {
  Recordset& slot = process.dten().rssqlGeneral1;
  const std::string id = std::to_string(report_id);
  if (!HasRows(slot, "Select * from sysobjects Where Name = 'tblRolePermissionOnReport'")) {
    return true;
  }
  if (!HasRows(slot, "Select * from tblRolePermissionOnReport Where ReportID=" + id)) return true;
  return HasRows(slot,
                 "Select * from tblRole Where (ID in (Select RoleID From tblRolePermissionOnReport "
                 "Where ReportID=" +
                     id +
                     ") or IsAdmin=1) and ID in (Select RoleID from tblUserRole Where UserID=" +
                     std::to_string(user_id) + ")");
}

}  // namespace vorek
