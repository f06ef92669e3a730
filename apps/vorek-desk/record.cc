#include "record.h"

#include "catalog/report_row.h"
#include "catalog/sql_names.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek::desk {
namespace {

constexpr int kMostRows = 1000;  // of a detail table

std::string Name(const std::string& name) { return "[" + text::Replace(name, "]", "]]") + "]"; }
std::string Literal(const std::string& text) { return "N'" + text::Replace(text, "'", "''") + "'"; }

Recordset Slot(Process& process) { return Recordset(process.dten().cnn, DtEn::kTimeout); }

Recordset Open(Process& process, const std::string& query) {
  Recordset slot = Slot(process);
  slot.Open(query);
  return slot;
}

std::vector<std::string> TablesOf(Process& process, std::int32_t form_type, bool master) {
  Recordset rows =
      Open(process, "Select TableName from tblVorekTableFormRelationship Where FormTypeID=" +
                        std::to_string(form_type) + " and isnull(IsMaster, 0)" +
                        (master ? "=1" : "<>1") + " Order by TableName");
  std::vector<std::string> tables;
  for (; !rows.AtEnd(); rows.MoveNext()) tables.push_back(TextOf(rows, "TableName"));
  return tables;
}

// The value of a field as SQL writes it.
std::string ValueOf(const FieldValue& field) {
  const std::string text = field.Text();
  const bool number = !text.empty() && text.find_first_not_of("-0123456789") == std::string::npos;
  return number ? text : Literal(text);
}

// The rows of a table that lead to the record; nothing for a table that isn't related to it.
std::optional<RecordTable> ReadDetail(Process& process, const RecordTable& master,
                                      const std::string& table) {
  Recordset relation = Open(process,
                            "Select ReferenceKey, ForeignKey from tblVorekRelatedTables Where "
                            "ReferenceTable=" +
                                Literal(master.name) + " and DependentTable=" + Literal(table));
  if (relation.AtEnd()) return std::nullopt;
  const std::string key = TextOf(relation, "ReferenceKey");
  const std::string condition = master.rows.AtEnd() ? "1=0"
                                                    : Name(TextOf(relation, "ForeignKey")) + "=" +
                                                          ValueOf(master.rows.Field(key));
  return RecordTable{table, Open(process, "Select Top " + std::to_string(kMostRows) + " * from " +
                                              Name(table) + " Where " + condition)};
}

}  // namespace

std::optional<Record> ReadRecord(Process& process, std::int32_t form_type,
                                 const std::string& condition) {
  const std::vector<std::string> masters = TablesOf(process, form_type, true);
  if (masters.empty()) return std::nullopt;
  const std::string where = condition.empty() ? "1=0" : condition;
  Record record{
      {masters[0], Open(process, "Select * from " + Name(masters[0]) + " Where " + where)}, {}};
  if (!condition.empty() && record.master.rows.AtEnd()) return std::nullopt;
  for (const std::string& table : TablesOf(process, form_type, false)) {
    std::optional<RecordTable> detail = ReadDetail(process, record.master, table);
    if (detail) record.details.push_back(std::move(*detail));
  }
  return record;
}

std::string ConditionOfKey(Process& process, std::int32_t form_type, const std::string& key) {
  const std::vector<std::string> masters = TablesOf(process, form_type, true);
  Recordset keys =
      Open(process, "Select Name, Type from tblVorekColumn Where IsPrimaryKey=1 and TableName=" +
                        Literal(masters.empty() ? "" : masters[0]) + " Order by ID");
  const std::string name = keys.AtEnd() ? "ID" : TextOf(keys, "Name");
  const bool number = keys.AtEnd() || IsNumericSqlType(TextOf(keys, "Type"));
  return Name(name) + "=" + (number ? std::to_string(text::TextToNumber(key)) : Literal(key));
}

}  // namespace vorek::desk
