#include "drill/form_metadata_reader.h"

#include "catalog/report_row.h"
#include "drill/query_columns.h"

namespace vorek {
namespace {

// The selection changes in the midst of passes too, which hold the shared slots.
Recordset OwnSlot(ReportContext& report) {
  return Recordset(report.process.dten().cnn, DtEn::kTimeout);
}

StoredQuery ReadQuery(Recordset& slot, std::int32_t report_id) {
  StoredQuery query;
  OpenSlot(slot, "Select SQLQuery, Reserved, SQLSP From tblVorekReport Where ID=" +
                     std::to_string(report_id));
  if (slot.RecordCount() > 0) {
    query.text = TextOf(slot, "SQLQuery") + TextOf(slot, "Reserved");
    query.procedure = TextOf(slot, "SQLSP");
  }
  query.select_list = SelectListOf(query.text);
  return query;
}

// A database that lacks the columns that came later.
StoredQuery ReadOldQuery(Recordset& slot, std::int32_t report_id) {
  StoredQuery query;
  OpenSlot(slot, ReportRowQuery(report_id));
  if (slot.RecordCount() > 0) {
    query.text = TextOf(slot, "SQLQuery");
    IgnoreErrors([&] { query.text += TextOf(slot, "Reserved"); });
    IgnoreErrors([&] { query.procedure = TextOf(slot, "SQLSP"); });
  }
  query.select_list = SelectListOf(query.text);
  return query;
}

std::vector<KeyField> ReadKeyFields(Recordset& slot, std::int32_t form_type) {
  std::vector<KeyField> fields;
  OpenSlot(slot,
           "Select distinct tblVorekColumn.* from tblVorekColumn inner join tblVorekTable on "
           "TableName=tblVorekTable.Name inner join tblVorekTableFormRelationship on  "
           "tblVorekTable.Name = tblVorekTableFormRelationship.TableName Where IsPrimaryKey=1 and "
           "IsMaster=1 and IsNull(IsMaster, 1)=1 and "
           "tblVorekTableFormRelationship.FormTypeID=" +
               std::to_string(form_type));
  for (; !slot.AtEnd(); slot.MoveNext()) {
    fields.push_back({TextOf(slot, "TableName"), TextOf(slot, "Name"), TextOf(slot, "Type")});
  }
  return fields;
}

std::vector<std::string> ReadTables(Recordset& slot, std::int32_t form_type) {
  std::vector<std::string> tables;
  OpenSlot(slot, "Select * from tblVorekTableFormRelationship Where FormTypeID=" +
                     std::to_string(form_type));
  for (; !slot.AtEnd(); slot.MoveNext()) tables.push_back(TextOf(slot, "TableName"));
  return tables;
}

std::string ReadMasterTable(Recordset& slot, std::int32_t form_type) {
  OpenSlot(slot,
           "Select IsNull(tblVorekFormType.FileName,'') as FileName, IsNull(tblVorekTable.Name,'') "
           "as Name From tblVorekFormType,tblVorekTable Where tblVorekTable.Name in (Select "
           "TableName from tblVorekTableFormRelationship Where FormTypeID=tblVorekFormType.ID and "
           "IsMaster=1) and tblVorekFormType.ID=" +
               std::to_string(form_type));
  const bool made = !slot.AtEnd() && !TextOf(slot, "FileName").empty();
  return made ? TextOf(slot, "Name") : "";
}

}  // namespace

const StoredQuery& StoredQueryOf(ReportContext& report) {
  std::optional<StoredQuery>& query = report.state.Forms.query;
  if (!query) {
    Recordset slot = OwnSlot(report);
    const std::int32_t id = report.state.ReportID;
    if (!IgnoreErrors([&] { query = ReadQuery(slot, id); })) query = ReadOldQuery(slot, id);
    if (!query->text.empty()) report.state.SQLQuery = query->text;
  }
  return *query;
}

const std::vector<KeyField>& KeyFieldsOf(ReportContext& report, std::int32_t form_type) {
  auto& keys = report.state.Forms.keys;
  const auto known = keys.find(form_type);
  if (known != keys.end()) return known->second;
  Recordset slot = OwnSlot(report);
  return keys[form_type] = ReadKeyFields(slot, form_type);
}

const std::string& MasterTableOf(ReportContext& report, std::int32_t form_type) {
  auto& tables = report.state.Forms.master_tables;
  const auto known = tables.find(form_type);
  if (known != tables.end()) return known->second;
  Recordset slot = OwnSlot(report);
  return tables[form_type] = ReadMasterTable(slot, form_type);
}

std::string FormTableOf(ReportContext& report, std::int32_t form_type,
                        const std::string& select_list) {
  auto& tables = report.state.Forms.tables;
  if (tables.find(form_type) == tables.end()) {
    Recordset slot = OwnSlot(report);
    tables[form_type] = ReadTables(slot, form_type);
  }
  std::string last;
  for (const std::string& table : tables[form_type]) {
    last = table;
    if (FindInList(select_list, table + ".ID")) break;
  }
  return last;
}

}  // namespace vorek
