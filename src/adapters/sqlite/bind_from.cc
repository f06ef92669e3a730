#include <algorithm>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"
#include "vorek/error.h"

// FROM: tables, views, derived tables and joins, and what their columns are called by.
namespace vorek::sqlite {
namespace {

constexpr std::size_t kMaxViews = 32;  // that stand inside one another
constexpr int kMaxTables = 1000;       // of a statement with its views

bool KeepsAllRows(TableRef::Join join, bool left_side) {
  switch (join) {
    case TableRef::Join::kLeft:
      return left_side;
    case TableRef::Join::kRight:
      return !left_side;
    case TableRef::Join::kFull:
      return false;
    default:
      return true;
  }
}

std::string_view JoinText(TableRef::Join join) {
  switch (join) {
    case TableRef::Join::kLeft:
      return " LEFT JOIN ";
    case TableRef::Join::kRight:
      return " RIGHT JOIN ";
    case TableRef::Join::kFull:
      return " FULL JOIN ";
    default:
      return " JOIN ";
  }
}

bool HasRightOrFull(const TableRef& table) {
  if (table.kind != TableRef::Kind::kJoin) return false;
  return table.join == TableRef::Join::kRight || table.join == TableRef::Join::kFull ||
         HasRightOrFull(*table.left) || HasRightOrFull(*table.right);
}

}  // namespace

void Binder::MissingObject(const ObjectName& name) const {
  std::string path;
  for (const std::string& part : name.parts) path += (path.empty() ? "" : ".") + part;
  throw Error(ErrorNumber::kMissingObject,
              "Invalid object name '" + path + "' (" + PlaceOf(source_, name.at) + ").");
}

std::string Binder::TableOf(const ObjectName& name) const {
  if (!name.IsVariable()) return name.Last();
  const auto found = variables_.find(LowerWord(name.Last()));
  if (found == variables_.end() || found->second.table.empty()) {
    Refuse(name.at, "Must declare the table variable \"" + name.Last() + "\"");
  }
  return found->second.table;
}

void Binder::AddSource(Source source, std::size_t at) {
  for (const Source& other : scope_->sources) {
    if (text::EqualsIgnoreCase(other.name, source.name)) {
      Refuse(at, "The objects in the FROM clause have the same exposed name \"" + source.name +
                     "\": give them aliases");
    }
  }
  scope_->sources.push_back(std::move(source));
}

std::vector<ColumnInfo> Binder::AsColumns(const std::vector<OutputColumn>& outputs) {
  std::vector<ColumnInfo> columns;
  columns.reserve(outputs.size());
  for (const OutputColumn& output : outputs) {
    ColumnInfo column;
    column.name = output.name;
    column.type = output.type.IsNull() ? Make(TypeKind::kInt) : output.type;
    column.nullable = output.nullable;
    column.collated = output.collated;
    columns.push_back(std::move(column));
  }
  return columns;
}

std::vector<ColumnInfo> Binder::NamedColumns(const std::vector<OutputColumn>& outputs,
                                             const std::vector<std::string>& names,
                                             const std::string& table, std::size_t at) const {
  std::vector<ColumnInfo> columns = AsColumns(outputs);
  if (!names.empty() && names.size() != columns.size()) {
    Refuse(at, "'" + table + "' has " + std::to_string(columns.size()) + " columns, but " +
                   std::to_string(names.size()) + " names are given");
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!names.empty()) columns[i].name = names[i];
    if (columns[i].name.empty()) {
      Refuse(at, "No column name was specified for column " + std::to_string(i + 1) + " of '" +
                     table + "'");
    }
    for (std::size_t other = 0; other < i; ++other) {
      if (text::EqualsIgnoreCase(columns[other].name, columns[i].name)) {
        Refuse(at, "The column '" + columns[i].name + "' was specified multiple times for '" +
                       table + "'");
      }
    }
  }
  return columns;
}

std::string Binder::BindFrom(const std::vector<TableRef>& tables) {
  std::string sql;
  for (const TableRef& table : tables) {
    sql += (sql.empty() ? " FROM " : ", ") + BindTable(table, false, !sql.empty());
  }
  return sql;
}

std::string Binder::BindTable(const TableRef& table, bool nullable, bool after_comma) {
  switch (table.kind) {
    case TableRef::Kind::kJoin:
      return BindJoin(table, nullable, after_comma);
    case TableRef::Kind::kQuery:
      return BindSubquery(table, nullable);
    case TableRef::Kind::kPivot:
    case TableRef::Kind::kUnpivot:
      return BindPivot(table, nullable);
    case TableRef::Kind::kTable:
      break;
  }
  return BindNamedTable(table, nullable);
}

std::string Binder::BindJoin(const TableRef& join, bool nullable, bool after_comma) {
  // A join binds tighter than a comma; for inner and left joins the order makes no difference.
  const bool applies =
      join.join == TableRef::Join::kCrossApply || join.join == TableRef::Join::kOuterApply;
  const bool brackets = after_comma && HasRightOrFull(join);
  std::string sql =
      BindTable(*join.left, nullable || !KeepsAllRows(join.join, true), after_comma && !brackets);
  if (applies) return sql + BindApply(join, nullable);
  sql += JoinText(join.join);
  std::string right = BindTable(*join.right, nullable || !KeepsAllRows(join.join, false), false);
  sql += join.right->kind == TableRef::Kind::kJoin ? "(" + right + ")" : right;
  if (join.on != nullptr) sql += " ON " + BindCondition(*join.on, 0);
  return brackets ? "(" + sql + ")" : sql;
}

const Binder::CommonTableInfo* Binder::FindCommonTable(const ObjectName& name) const {
  if (name.parts.size() != 1) return nullptr;
  const auto found = std::find_if(
      common_tables_.rbegin(), common_tables_.rend(),
      [&](const auto& table) { return text::EqualsIgnoreCase(table.name, name.Last()); });
  return found == common_tables_.rend() ? nullptr : &*found;
}

std::string Binder::CatalogueView(const ObjectName& name) {
  const std::size_t parts = name.parts.size();
  const std::string key = NameKey(name.Last());
  const std::string owner = parts > 1 ? NameKey(name.parts[parts - 2]) : "";
  std::string table;
  if (owner.empty() || owner == "dbo" || owner == "sys") {
    if (key == "sysobjects" || key == "syscolumns") table = key;
  }
  if (owner == "sys" && (key == "objects" || key == "columns" || key == "tables" ||
                         key == "views" || key == "procedures")) {
    table = "sys." + key;
  }
  if (owner == "information_schema" && (key == "tables" || key == "columns")) {
    table = "information_schema." + key;
  }
  return table.empty() ? table : "vorek " + table;
}

std::string Binder::BindNamedTable(const TableRef& table, bool nullable) {
  schema_.KeepTime();
  CountTables(1, table.at);
  Source source;
  source.name = table.alias.empty() ? table.name.Last() : table.alias;
  source.sql = QuoteName(prefix_ + source.name);
  source.nullable = nullable;
  std::string name;
  if (const CommonTableInfo* common = FindCommonTable(table.name)) {
    name = QuoteName(common->name);
    source.own = common->columns;
  } else if (table.call) {
    return BindTableFunction(table, std::move(source));
  } else if (const std::string view = CatalogueView(table.name); !view.empty()) {
    schema_.FillCatalogueViews();
    const TableInfo* info = schema_.FindTable("#" + view);
    if (info == nullptr) MissingObject(table.name);
    name = "temp." + QuoteName(info->name);
    source.columns = &info->columns;
  } else {
    if (const ModuleInfo* module = schema_.FindModule(table.name.Last());
        module != nullptr && module->kind == "V") {
      return BindView(*module, std::move(source));
    }
    const TableInfo* info = schema_.FindTable(TableOf(table.name));
    if (info == nullptr) MissingObject(table.name);
    temporary_ = temporary_ || info->temporary;
    name = (info->temporary ? "temp." : "main.") + QuoteName(info->name);
    source.columns = &info->columns;
  }
  if (!table.columns.empty()) Refuse(table.at, "Only a query in FROM may name its columns");
  const std::string alias = source.sql;
  AddSource(std::move(source), table.at);
  return name + " AS " + alias;
}

void Binder::CountTables(int tables, std::size_t at) {
  tables_ += tables;
  if (tables_ > kMaxTables) {
    Refuse(at, "Too many tables in the query, those of its views included: more than " +
                   std::to_string(kMaxTables));
  }
}

const Binder::ViewTable& Binder::WriteView(const ModuleInfo& view) {
  const std::string key = NameKey(view.name);
  const auto found = view_tables_->by_name.find(key);
  if (found != view_tables_->by_name.end()) return found->second;
  if (std::find(views_.begin(), views_.end(), key) != views_.end()) {
    throw Error(ErrorNumber::kSyntax, "The view '" + view.name + "' refers to itself.");
  }
  if (views_.size() >= kMaxViews) {
    throw Error(ErrorNumber::kSyntax,
                "Maximum view nesting level exceeded (limit 32) at the view '" + view.name + "'.");
  }
  // A view sees neither the columns nor the WITH tables of the text that reads it.
  const Statement& definition = view.Definition();
  const Variables none;
  Binder inner(schema_, none, view.source);
  inner.views_ = views_;
  inner.views_.push_back(key);
  inner.view_tables_ = view_tables_;
  inner.parameters_ = parameters_;
  BoundQuery query = inner.BindQuery(*definition.query);
  parameters_ = inner.parameters_;
  calls_ = calls_ || inner.calls_;
  ViewTable table;
  table.info.name = "view " + std::to_string(view_tables_->by_name.size()) + " " + view.name;
  table.info.columns = inner.NamedColumns(query.columns, definition.view_columns, view.name, 0);
  table.tables = inner.tables_;
  table.temporary = inner.temporary_;
  std::string names;
  for (const ColumnInfo& column : table.info.columns) {
    names += (names.empty() ? "" : ", ") + QuoteName(column.name);
  }
  std::string& sql = view_tables_->sql;
  sql += (sql.empty() ? "" : ", ") + QuoteName(table.info.name) + "(" + names +
         ") AS NOT MATERIALIZED (" + query.sql + ")";
  return view_tables_->by_name.emplace(key, std::move(table)).first->second;
}

Bound Binder::ArgumentOf(const ModuleInfo& module, std::size_t index, const Expr* given) {
  const vorek::sqlite::Parameter& parameter = module.Definition().parameters[index];
  if (given == nullptr && parameter.default_value == nullptr) {
    Refuse(0, "The parameter '" + parameter.name + "' of '" + module.name + "' has no default");
  }
  const Expr& value = given == nullptr ? *parameter.default_value : *given;
  return Convert(BindValue(value), parameter.type, Mode::kCast, value.at);
}

const ModuleInfo& Binder::TableFunction(const TableRef& table) {
  const ModuleInfo* module = schema_.FindModule(table.name.Last());
  const bool gives = module != nullptr && (module->kind == "IF" || module->kind == "TF");
  if (!gives) MissingObject(table.name);
  const std::size_t takes = module->Definition().parameters.size();
  if (table.arguments.size() != takes) {
    Refuse(table.at,
           "The function '" + module->name + "' takes " + std::to_string(takes) + " argument(s)");
  }
  if (views_.size() >= kMaxViews) {
    throw Error(ErrorNumber::kSyntax,
                "Maximum function nesting level exceeded (limit 32) at '" + module->name + "'.");
  }
  return *module;
}

std::string Binder::BindTableFunction(const TableRef& table, Source source) {
  const ModuleInfo* const module = &TableFunction(table);
  if (module->kind == "TF") return BindFilled(table, *module, std::move(source));
  const Statement& definition = module->Definition();
  const Variables none;
  Binder inner(schema_, none, module->source);
  // The arguments see what a derived table sees: the queries around, not the tables beside.
  Scope* const beside = scope_;
  scope_ = beside->outer;
  Scope nothing;
  if (scope_ == nullptr) scope_ = &nothing;
  for (std::size_t i = 0; i < table.arguments.size(); ++i) {
    inner.arguments_[LowerWord(definition.parameters[i].name)] =
        ArgumentOf(*module, i, table.arguments[i].get());
  }
  scope_ = beside;
  inner.views_ = views_;
  inner.views_.push_back(NameKey(module->name));
  inner.prefix_ = "f" + std::to_string(views_.size()) + " ";
  inner.view_tables_ = view_tables_;
  inner.parameters_ = parameters_;
  BoundQuery query = inner.BindQuery(*definition.query);
  parameters_ = inner.parameters_;
  calls_ = calls_ || inner.calls_;
  temporary_ = temporary_ || inner.temporary_;
  CountTables(inner.tables_, table.at);
  source.own = NamedColumns(query.columns, table.columns, module->name, table.at);
  const std::string sql = "(" + query.sql + ") AS " + source.sql;
  AddSource(std::move(source), table.at);
  return sql;
}

Translation Binder::ArgumentsOf(const ModuleInfo& module, const TableRef& table) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  BoundQuery query;
  query.sql = "SELECT 0";
  for (std::size_t i = 0; i < table.arguments.size(); ++i) {
    query.sql += ", " + ArgumentOf(module, i, table.arguments[i].get()).sql;
  }
  Translation arguments = Finish(std::move(query));
  if (!arguments.filled.empty()) {
    Refuse(table.at, "A function of several statements among another's arguments is not supported");
  }
  return arguments;
}

std::string Binder::BindFilled(const TableRef& table, const ModuleInfo& module, Source source) {
  if (!arguments_.empty()) {
    Refuse(table.at, "A function of several statements within an inline function is not supported");
  }
  // The arguments see no table: they are computed once, before the statement.
  Binder alone(schema_, variables_, source_);
  Filled filled;
  filled.function = module.name;
  filled.arguments = std::make_shared<Translation>(alone.ArgumentsOf(module, table));
  for (const ColumnDefinition& column : module.Definition().body[1]->definitions) {
    filled.columns.push_back({column.name, column.type, column.nullable, true});
  }
  std::vector<Filled>& all = view_tables_->filled;
  filled.table = "#@rows " + view_tables_->place + " " + std::to_string(all.size());
  source.own = NamedColumns(filled.columns, {}, module.name, table.at);
  temporary_ = true;
  std::string sql = "temp." + QuoteName(filled.table) + " AS " + source.sql;
  all.push_back(std::move(filled));
  AddSource(std::move(source), table.at);
  return sql;
}

std::string Binder::BindView(const ModuleInfo& view, Source source) {
  const ViewTable& table = WriteView(view);
  CountTables(table.tables, 0);
  temporary_ = temporary_ || table.temporary;
  source.own = table.info.columns;
  std::string sql = QuoteName(table.info.name) + " AS " + source.sql;
  AddSource(std::move(source), 0);
  return sql;
}

std::string Binder::BindSubquery(const TableRef& table, bool nullable) {
  Scope none;
  // A derived table sees the queries around it, never the tables beside it.
  Scope* const beside = scope_;
  scope_ = beside->outer;
  BoundQuery query = BindQuery(*table.query);
  scope_ = beside;
  Source source;
  source.name = table.alias;
  source.sql = QuoteName(prefix_ + table.alias);
  source.nullable = nullable;
  source.own = NamedColumns(query.columns, table.columns, table.alias, table.at);
  std::string sql = "(" + query.sql + ")";
  if (!table.columns.empty()) {
    std::string names;
    for (const std::string& name : table.columns) {
      names += (names.empty() ? "" : ", ") + QuoteName(name);
    }
    sql = "(WITH " + QuoteName("names") + "(" + names + ") AS (" + query.sql + ") SELECT * FROM " +
          QuoteName("names") + ")";
  }
  const std::string alias = source.sql;
  AddSource(std::move(source), table.at);
  return sql + " AS " + alias;
}

}  // namespace vorek::sqlite
