#include <optional>

#include "catalog/report_row.h"
#include "catalog/sql_names.h"
#include "engine/rights.h"
#include "text/utf8.h"

// Row security: the query's text is extended by a condition on tblVorekAllowablePosition.
namespace vorek {
namespace {

constexpr std::string_view kFrom = " FROM ";

// Works on one query. Positions are byte offsets; all text that is looked for is Latin.
class SecurityClause {
 public:
  SecurityClause(Process& process, ReportState& state, const std::string& query)
      : process_(process), state_(state), query_(query) {}

  // The condition without "Where"; nothing if the query can't be restricted.
  std::optional<std::string> Build();

 private:
  bool FindFormType();
  bool IsDetailOfForms();
  std::string DetailClause();
  std::string ParentCondition();
  bool FindKey();
  bool FindKeyOfTable();
  bool FindKeyInSelectList();
  std::string Head() const { return query_.substr(0, from_); }
  std::string Position() const { return std::to_string(process_.main.GlobalPositionID); }
  Recordset& Slot() { return process_.dten().rssqlGeneral1; }

  Process& process_;
  ReportState& state_;
  const std::string& query_;
  std::size_t from_ = 0;        // where " FROM " stands
  std::string form_type_text_;  // an SQL expression or number
  std::string id_text_;         // an SQL expression
  std::string master_table_;
};

// Puts the characters before `at` in front of `text`, up to the start of a select item.
template <typename IsStart>
std::string WalkBack(const std::string& head, std::size_t at, std::string text,
                     const IsStart& is_start) {
  while (at > 0) {
    --at;
    text.insert(text.begin(), head[at]);
    if (at == 0 || (IsAlphaNumeric(head.substr(at, 1)) && is_start(at))) break;
  }
  return text;
}

std::optional<std::string> SecurityClause::Build() {
  from_ = text::ToUpper(query_).find(kFrom);
  if (from_ == std::string::npos || !FindFormType()) return std::nullopt;
  OpenSlot(Slot(), "Select * from tblVorekTableFormRelationship Where IsMaster =1 and FormTypeID=" +
                       std::to_string(state_.FormTypeID));
  master_table_ = Slot().RecordCount() > 0 ? TextOf(Slot(), "TableName") : "";
  if (IsDetailOfForms()) return DetailClause();
  if (!FindKey()) return std::nullopt;
  return " Exists (Select * from tblVorekAllowablePosition Where FormTypeID= " + form_type_text_ +
         " and FormID= " + id_text_ + " and PositionID= " + Position() + ")";
}

bool SecurityClause::FindFormType() {
  if (state_.ReportFormTypeID != -1) {
    form_type_text_ = std::to_string(state_.ReportFormTypeID);
    state_.FormTypeID = state_.ReportFormTypeID;
    return true;
  }
  const std::string head = Head();
  const std::size_t at = text::FindIgnoreCase(head, "FormTypeID");
  if (at == std::string::npos) return false;
  form_type_text_ = WalkBack(head, at, "FormTypeID", [&](std::size_t i) {
    return i >= 2 && head[i - 1] == ' ' && head[i - 2] == ',';
  });
  return true;
}

// Leaves the parents of the master table open in the slot.
bool SecurityClause::IsDetailOfForms() {
  OpenSlot(Slot(),
           "Select * from tblVorekRelatedTables Where ReferenceTable <> DependentTable and "
           "DependentTable like '" +
               master_table_ +
               "' and ForeignKey in (Select Name from tblVorekColumn Where TableName like '" +
               master_table_ + "' and IsPrimaryKey=1)");
  return Slot().RecordCount() > 0;
}

std::string SecurityClause::DetailClause() {
  std::string clause;
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    if (TextOf(Slot(), "ReferenceKey") != "ID") continue;
    const std::string condition = ParentCondition();
    if (condition.empty()) continue;
    if (!clause.empty()) clause += " AND ";
    clause += condition;
  }
  Slot().Close();
  return clause;
}

std::string SecurityClause::ParentCondition() {
  const std::string table = TextOf(Slot(), "ReferenceTable");
  const std::string key = table + "." + TextOf(Slot(), "ReferenceKey");
  Recordset& deps = process_.dten().rssqlDeps;
  OpenSlot(
      deps,
      "Select * from tblVorekFormType Where SecurityTypeID=1 and ID in (Select FormTypeID from "
      "tblVorekTableFormRelationship Where TableName like '" +
          table + "')");
  std::string condition;
  if (deps.RecordCount() > 0) {
    condition =
        " Exists (Select * from tblVorekAllowablePosition Where FormTypeID= " + TextOf(deps, "ID") +
        " and FormID in (Select " + key + " from " + table + " Where " + key + " = " +
        master_table_ + "." + TextOf(Slot(), "ForeignKey") + " ) and PositionID= " + Position() +
        ")";
  }
  deps.Close();
  return condition;
}

bool SecurityClause::FindKey() {
  if (FindKeyOfTable()) return true;
  if (!FindKeyInSelectList()) return false;
  // The walk for the form type may have reached the start of the query.
  form_type_text_ = text::ReplaceIgnoreCase(form_type_text_, "select ", "");
  return true;
}

bool SecurityClause::FindKeyOfTable() {
  OpenSlot(Slot(), "Select * from tblVorekTableFormRelationship Where FormTypeID=" +
                       std::to_string(state_.FormTypeID));
  const std::string upper = text::ToUpper(query_);
  for (; !Slot().AtEnd(); Slot().MoveNext()) {
    const std::string key = TextOf(Slot(), "TableName") + ".ID";
    if (!text::Contains(upper, text::ToUpper(key))) continue;
    id_text_ = key;
    break;
  }
  Slot().Close();
  return !id_text_.empty();
}

bool SecurityClause::FindKeyInSelectList() {
  const std::string head = Head();
  id_text_ = ".ID";
  std::size_t at = text::FindIgnoreCase(head, id_text_);
  if (at == std::string::npos) {
    id_text_ = "FormID";
    at = text::FindIgnoreCase(head, id_text_);
  }
  if (at == std::string::npos) return false;
  id_text_ =
      WalkBack(head, at, id_text_, [&](std::size_t i) { return i >= 1 && head[i - 1] == ' '; });
  return true;
}

std::string WithCondition(const std::string& query, const std::string& clause) {
  const std::size_t order = text::FindIgnoreCase(query, " Order By ");
  const std::string body = query.substr(0, order);
  const std::string tail = order == std::string::npos ? "" : query.substr(order);
  const std::size_t from = text::ToUpper(body).find(kFrom);
  const bool has_where =
      from != std::string::npos && text::FindIgnoreCase(body, " Where ", from) != std::string::npos;
  return body + (has_where ? " AND " : " Where ") + clause + " " + tail;
}

}  // namespace

void ApplySecurityClause(Process& process, ReportState& state, std::string& query) {
  // A query that fails or is cancelled on the way leaves the restriction in force.
  const std::optional<std::string> clause = SecurityClause(process, state, query).Build();
  process.dten().rssqlGeneral1.Close();
  state.MakeSecure = clause.has_value();
  if (!clause) return;
  if (clause->empty() || text::ContainsIgnoreCase(query, *clause)) return;
  query = WithCondition(query, *clause);
}

}  // namespace vorek
