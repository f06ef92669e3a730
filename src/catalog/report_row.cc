#include "catalog/report_row.h"

#include "text/number.h"

namespace vorek {

std::string TextOf(const Recordset& row, const char* column) { return row.Field(column).Text(); }

bool FlagOf(const Recordset& row, const char* column, bool null_value) {
  const FieldValue value = row.Field(column);
  return value.IsNull() ? null_value : value.Flag();
}

std::int32_t NumberOf(const Recordset& row, const char* column) {
  return text::TextToNumber(row.Field(column).Text());
}

std::string ReportRowQuery(std::int32_t report_id) {
  return "select * from tblVorekReport where ID =" + std::to_string(report_id);
}

std::string RunLayoutQuery(std::int32_t report_id) {
  return "Select ColumnNumber,Alignment,Width,isnull(MergeType,3) as MergeType,TransposeType, "
         "IsNull(MakeSum,0) as MakeSum From tblVorekReportLayout Where ReportID=" +
         std::to_string(report_id);
}

std::string StoredLayoutQuery(std::int32_t report_id) {
  return "Select * From tblVorekReportLayout Where ReportID=" + std::to_string(report_id) +
         "  Order by ColumnNumber";
}

std::string ExpressionQuery(std::int32_t report_id) {
  return "Select * from tblVorekReportExpression Where ReportID = " + std::to_string(report_id) +
         " Order by ColumnNumber";
}

std::string TransposeLayoutQuery(std::int32_t report_id) {
  return "Select ColumnNumber,tblVorekReportTranspose.Alignment,tblVorekReportTranspose.Width,"
         "tblVorekReportTranspose.MergeType From tblVorekReportTranspose Where ReportID=" +
         std::to_string(report_id) + "  Order by ColumnNumber";
}

std::string CrossTableQuery(std::int32_t report_id, std::int32_t last_column) {
  return "Select ColumnNumber,tblVorekReportTranspose.Alignment,tblVorekReportTranspose.Width,"
         "tblVorekReportTranspose.MergeType,isnull(SortedAfterTransporting,0) as "
         "SortedAfterTransporting From tblVorekReportTranspose Where ReportID=" +
         std::to_string(report_id) + " and ColumnNumber <=" + std::to_string(last_column);
}

std::string WholeLayoutQuery(std::int32_t report_id, bool transposed) {
  return std::string("Select * from ") +
         (transposed ? "tblVorekReportTranspose" : "tblVorekReportLayout") +
         " Where ReportID = " + std::to_string(report_id);
}

bool SystemParameter(Recordset& slot, std::int32_t id) {
  OpenSlot(slot, "Select * from tblVorekSystemParameters Where ID=" + std::to_string(id) +
                     " and Value=1");
  const bool found = slot.RecordCount() > 0;
  slot.Close();
  return found;
}

std::vector<CatalogEntry> ReadCatalog(Recordset& slot) {
  std::vector<CatalogEntry> entries;
  OpenSlot(slot, "Select ID, Title from tblVorekReport Order by ID");
  for (; !slot.AtEnd(); slot.MoveNext()) {
    entries.push_back({slot.Field("ID").Number(), TextOf(slot, "Title")});
  }
  slot.Close();
  return entries;
}

std::vector<CatalogGroup> ReadCatalogGroups(Recordset& slot) {
  std::vector<CatalogGroup> groups;
  IgnoreErrors([&] {
    OpenSlot(slot, "Select FromID, ToID, Title from tblVorekReportGroup Order by FromID");
    for (; !slot.AtEnd(); slot.MoveNext()) {
      groups.push_back({NumberOf(slot, "FromID"), NumberOf(slot, "ToID"), TextOf(slot, "Title")});
    }
  });
  slot.Close();
  return groups;
}

}  // namespace vorek
