#include "adapters/sqlite/schema.h"

#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/parser.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

bool HasTable(sqlite3* db, const char* name) {
  const PreparedPtr statement =
      Prepare(db, "SELECT 1 FROM main.sqlite_schema WHERE type = 'table' AND name = ?1");
  BindText(statement.get(), 1, name);
  return Step(db, statement.get());
}

bool HasColumn(sqlite3* db, const std::string& schema, const char* table, const char* column) {
  return sqlite3_table_column_metadata(db, schema.c_str(), table, column, nullptr, nullptr, nullptr,
                                       nullptr, nullptr) == SQLITE_OK;
}

// The base tables of the catalogue views, and views over them under the names that a text may
// write. All are temporary: nothing of it is kept in the file.
constexpr const char* kCatalogueViews[] = {
    "CREATE TEMP TABLE IF NOT EXISTS \"#vorek sysobjects\" (name nvarchar(128) COLLATE VOREK, id "
    "int, xtype varchar(2) COLLATE VOREK, type varchar(2) COLLATE VOREK, uid smallint, "
    "parent_obj int, crdate datetime)",
    "CREATE TEMP TABLE IF NOT EXISTS \"#vorek syscolumns\" (name nvarchar(128) COLLATE VOREK, id "
    "int, colid smallint, colorder smallint, xtype tinyint, length smallint, prec smallint, "
    "scale int, isnullable int, type_name nvarchar(128) COLLATE VOREK, table_name nvarchar(128) "
    "COLLATE VOREK, is_identity bit)",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek sys.objects\" AS SELECT name, id AS object_id, 1 AS "
    "schema_id, type, crdate AS create_date FROM \"#vorek sysobjects\"",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek sys.tables\" AS SELECT * FROM \"#vorek sys.objects\" "
    "WHERE type = 'U'",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek sys.views\" AS SELECT * FROM \"#vorek sys.objects\" "
    "WHERE type = 'V'",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek sys.procedures\" AS SELECT * FROM \"#vorek "
    "sys.objects\" WHERE type = 'P'",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek sys.columns\" AS SELECT id AS object_id, name, colid "
    "AS column_id, xtype AS system_type_id, length AS max_length, prec AS \"precision\", scale, "
    "isnullable AS is_nullable, is_identity FROM \"#vorek syscolumns\"",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek information_schema.tables\" AS SELECT name AS "
    "TABLE_NAME, CASE type WHEN 'V' THEN 'VIEW' ELSE 'BASE TABLE' END AS TABLE_TYPE, 'dbo' AS "
    "TABLE_SCHEMA, 'main' AS TABLE_CATALOG FROM \"#vorek sysobjects\" WHERE type IN ('U', 'V')",
    "CREATE TEMP VIEW IF NOT EXISTS \"#vorek information_schema.columns\" AS SELECT table_name AS "
    "TABLE_NAME, name AS COLUMN_NAME, colid AS ORDINAL_POSITION, CASE isnullable WHEN 1 THEN "
    "'YES' ELSE 'NO' END AS IS_NULLABLE, type_name AS DATA_TYPE, CASE WHEN "
    "xtype IN (34, 35) THEN 2147483647 WHEN xtype = 99 THEN 1073741823 "
    "WHEN xtype IN (165, 167, 173, 175, 231, 239) THEN prec END AS "
    "CHARACTER_MAXIMUM_LENGTH, 'dbo' AS TABLE_SCHEMA FROM \"#vorek syscolumns\"",
};

// What syscolumns tells of a type: the server's number, bytes, digits. Those of texts, binaries and
// decimals go by the column.
struct ServerType {
  TypeKind kind;
  int number;
  int length;
  int precision;
};
constexpr std::array<ServerType, 25> kServerTypes = {{
    {TypeKind::kInt, 56, 4, 10},           {TypeKind::kBinary, 173, 0, 0},
    {TypeKind::kVarBinary, 165, 0, 0},     {TypeKind::kImage, 34, 16, -1},
    {TypeKind::kChar, 175, 0, 0},          {TypeKind::kVarChar, 167, 0, 0},
    {TypeKind::kText, 35, 16, -1},         {TypeKind::kNChar, 239, 0, 0},
    {TypeKind::kNVarChar, 231, 0, 0},      {TypeKind::kNText, 99, 16, -1},
    {TypeKind::kGuid, 36, 16, 0},          {TypeKind::kBit, 104, 1, 1},
    {TypeKind::kTinyInt, 48, 1, 3},        {TypeKind::kSmallInt, 52, 2, 5},
    {TypeKind::kBigInt, 127, 8, 19},       {TypeKind::kSmallMoney, 122, 4, 10},
    {TypeKind::kMoney, 60, 8, 19},         {TypeKind::kDecimal, 106, 0, 0},
    {TypeKind::kReal, 59, 4, 24},          {TypeKind::kFloat, 62, 8, 53},
    {TypeKind::kTime, 41, 5, 16},          {TypeKind::kDate, 40, 3, 10},
    {TypeKind::kSmallDateTime, 58, 4, 16}, {TypeKind::kDateTime2, 42, 8, 27},
    {TypeKind::kDateTime, 61, 8, 23},
}};

ServerType ServerTypeOf(const Type& type) {
  const auto* found = std::find_if(kServerTypes.begin(), kServerTypes.end(),
                                   [&](const ServerType& row) { return row.kind == type.kind; });
  ServerType told = found == kServerTypes.end() ? kServerTypes[0] : *found;
  if (type.IsDecimal()) {
    const int digits = type.precision;
    told.length = digits < 10 ? 5 : digits < 20 ? 9 : digits < 29 ? 13 : 17;
    told.precision = digits;
  } else if (told.length == 0) {
    told.length = type.IsNational() && type.length != Type::kMax ? type.length * 2 : type.length;
    told.precision = type.length;
  }
  return told;
}

}  // namespace

const ColumnInfo* TableInfo::Find(std::string_view column) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& info) {
    return text::EqualsIgnoreCase(info.name, column);
  });
  return found == columns.end() ? nullptr : &*found;
}

std::string NameKey(std::string_view name) { return text::ToLower(name); }

int ObjectId(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : NameKey(name)) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  }
  return static_cast<int>(hash & 0x7FFFFFFFU) | 1;
}

bool IsInternalName(std::string_view name) {
  return text::StartsWithIgnoreCase(name, "sqlite_") ||
         text::EqualsIgnoreCase(name, "vorek_objects") ||
         text::EqualsIgnoreCase(name, "vorek_columns");
}

void Schema::Refresh() {
  if (version_query_ == nullptr) version_query_ = Prepare(db_, "PRAGMA main.schema_version");
  sqlite3_stmt* const query = version_query_.get();
  sqlite3_reset(query);
  const long long version = Step(db_, query) ? sqlite3_column_int64(query, 0) : 0;
  sqlite3_reset(query);
  if (version == version_) return;
  version_ = version;
  Changed();
}

void Schema::Changed() {
  ++stamp_;
  tables_.clear();
  modules_.clear();
}

void Schema::SetSession(const Session& session) {
  // A translation has the format of dates in it.
  if (session.date_format != session_.date_format) ++stamp_;
  session_ = session;
}

void Schema::TemporaryChanged() {
  ++temporary_stamp_;
  temporary_tables_.clear();
}

const TableInfo* Schema::FindTable(const std::string& name) {
  if (IsInternalName(name) || name.empty()) return nullptr;
  const bool temporary = name[0] == '#';
  auto& tables = temporary ? temporary_tables_ : tables_;
  const std::string key = NameKey(name);
  const auto found = tables.find(key);
  if (found != tables.end()) return found->second.get();
  const PreparedPtr statement =
      Prepare(db_, std::string("SELECT name, type FROM ") +
                       (temporary ? "temp.sqlite_temp_schema" : "main.sqlite_schema") +
                       " WHERE type IN ('table', 'view') AND name = ?1 COLLATE VOREK");
  BindText(statement.get(), 1, name);
  if (!Step(db_, statement.get())) return nullptr;
  auto table = std::make_unique<TableInfo>();
  table->name = ColumnText(statement.get(), 0);
  table->is_view = ColumnText(statement.get(), 1) == "view";
  table->temporary = temporary;
  LoadColumns(*table);
  return tables.emplace(key, std::move(table)).first->second.get();
}

void Schema::LoadColumns(TableInfo& table) {
  const PreparedPtr statement =
      Prepare(db_, "SELECT name, type, \"notnull\", pk, hidden FROM pragma_table_xinfo(?1, ?2)");
  BindText(statement.get(), 1, table.name);
  BindText(statement.get(), 2, table.temporary ? "temp" : "main");
  while (Step(db_, statement.get())) {
    if (sqlite3_column_int(statement.get(), 4) == 1) continue;  // of a virtual table
    ColumnInfo column;
    column.name = ColumnText(statement.get(), 0);
    column.type = TypeFromDeclaration(ColumnText(statement.get(), 1));
    column.nullable =
        sqlite3_column_int(statement.get(), 2) == 0 && sqlite3_column_int(statement.get(), 3) == 0;
    column.computed = sqlite3_column_int(statement.get(), 4) >= 2;
    if (column.type.IsText()) {
      const char* collation = nullptr;
      if (sqlite3_table_column_metadata(db_, table.temporary ? "temp" : "main", table.name.c_str(),
                                        column.name.c_str(), nullptr, &collation, nullptr, nullptr,
                                        nullptr) == SQLITE_OK) {
        column.collated = collation != nullptr && text::EqualsIgnoreCase(collation, "VOREK");
      }
    }
    table.columns.push_back(std::move(column));
  }
  OverlayColumns(table);
}

void Schema::OverlayColumns(TableInfo& table) {
  const bool kept = table.temporary ? table.name.rfind("#vorek ", 0) != 0 &&
                                          sqlite3_table_column_metadata(
                                              db_, "temp", "vorek_columns", nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr) == SQLITE_OK
                                    : HasTable(db_, "vorek_columns");
  if (!kept) return;
  const std::string schema = table.temporary ? "temp" : "main";
  const auto number = [&](const char* column) {
    return HasColumn(db_, schema, "vorek_columns", column) ? column : "1";
  };
  const PreparedPtr statement =
      Prepare(db_, std::string("SELECT column_name, type, identity, default_source, ") +
                       number("seed") + ", " + number("step") + " FROM " + schema +
                       ".vorek_columns WHERE table_name = ?1 COLLATE NOCASE");
  BindText(statement.get(), 1, table.name);
  while (Step(db_, statement.get())) {
    const std::string name = ColumnText(statement.get(), 0);
    const auto column = std::find_if(
        table.columns.begin(), table.columns.end(),
        [&](const ColumnInfo& info) { return text::EqualsIgnoreCase(info.name, name); });
    if (column == table.columns.end()) continue;
    const std::string type = ColumnText(statement.get(), 1);
    if (!type.empty()) column->type = TypeFromDeclaration(type);
    column->row_key = !type.empty();
    column->identity = sqlite3_column_int(statement.get(), 2) != 0;
    column->default_source = ColumnText(statement.get(), 3);
    column->seed = sqlite3_column_int64(statement.get(), 4);
    column->step = sqlite3_column_int64(statement.get(), 5);
  }
}

const ModuleInfo* Schema::FindModule(const std::string& name) {
  const std::string key = NameKey(name);
  const auto found = modules_.find(key);
  if (found != modules_.end()) return found->second.get();
  auto& slot = modules_[key];
  if (!HasTable(db_, "vorek_objects")) return nullptr;
  const PreparedPtr statement = Prepare(
      db_, "SELECT name, kind, source FROM main.vorek_objects WHERE name = ?1 COLLATE VOREK");
  BindText(statement.get(), 1, name);
  if (!Step(db_, statement.get())) return nullptr;
  auto module = std::make_unique<ModuleInfo>();
  module->name = ColumnText(statement.get(), 0);
  module->kind = ColumnText(statement.get(), 1);
  module->source = ColumnText(statement.get(), 2);
  module->batch = Parser(module->source, checkpoint_).ParseBatch();
  const auto& statements = module->batch->statements;
  if (statements.size() != 1 || statements[0]->kind != StatementKind::kCreateModule ||
      statements[0]->word != module->kind) {
    throw Error(ErrorNumber::kSyntax,
                "The database keeps '" + module->name + "' in words that don't define it.");
  }
  slot = std::move(module);
  return slot.get();
}

std::vector<ObjectRow> Schema::Objects() {
  std::vector<ObjectRow> rows;
  const PreparedPtr tables =
      Prepare(db_,
              "SELECT name, CASE type WHEN 'view' THEN 'V' ELSE 'U' END FROM "
              "main.sqlite_schema WHERE type IN ('table', 'view') ORDER BY name");
  while (Step(db_, tables.get())) {
    const std::string name = ColumnText(tables.get(), 0);
    if (!IsInternalName(name)) rows.push_back({name, ColumnText(tables.get(), 1), ObjectId(name)});
  }
  if (!HasTable(db_, "vorek_objects")) return rows;
  const PreparedPtr modules =
      Prepare(db_, "SELECT name, kind FROM main.vorek_objects ORDER BY name");
  while (Step(db_, modules.get())) {
    const std::string name = ColumnText(modules.get(), 0);
    rows.push_back({name, ColumnText(modules.get(), 1), ObjectId(name)});
  }
  return rows;
}

void Schema::FillCatalogueViews() {
  if (filled_ == stamp_) return;
  filled_ = stamp_;  // from here on: a view that is listed may itself read the catalogue
  try {
    FillObjects();
  } catch (const Error& error) {
    filled_ = -1;
    throw Error(error.Number(), error.Description());
  }
}

void Schema::FillObjects() {
  for (const char* sql : kCatalogueViews) Run(db_, sql);
  Run(db_, "DELETE FROM temp.\"#vorek sysobjects\"");
  Run(db_, "DELETE FROM temp.\"#vorek syscolumns\"");
  const PreparedPtr insert =
      Prepare(db_,
              "INSERT INTO temp.\"#vorek sysobjects\" VALUES (?1, ?2, ?3, ?3, 1, 0, "
              "'1900-01-01 00:00:00.000')");
  for (const ObjectRow& object : Objects()) {
    sqlite3_reset(insert.get());
    BindText(insert.get(), 1, object.name);
    sqlite3_bind_int(insert.get(), 2, object.id);
    BindText(insert.get(), 3, object.kind);
    Step(db_, insert.get());
    checkpoint_();
    // A view whose tables are gone is listed without columns.
    IgnoreErrors([&] { FillColumns(object); });
  }
}

void Schema::FillColumns(const ObjectRow& object) {
  std::vector<ColumnInfo> columns;
  if (object.kind == "U") {
    if (const TableInfo* table = FindTable(object.name)) columns = table->columns;
  } else if (object.kind == "V") {
    const ModuleInfo* view = FindModule(object.name);
    if (view == nullptr) return;
    const Variables none;
    Binder binder(*this, none, view->source);
    for (const OutputColumn& output :
         binder.Describe(*view->Definition().query, view->Definition().view_columns)) {
      ColumnInfo column;
      column.name = output.name;
      column.type = output.type;
      column.nullable = output.nullable;
      columns.push_back(std::move(column));
    }
  }
  const PreparedPtr insert =
      Prepare(db_,
              "INSERT INTO temp.\"#vorek syscolumns\" VALUES (?1, ?2, ?3, ?3, ?4, ?5, ?6, "
              "?7, ?8, ?9, ?10, ?11)");
  int number = 0;
  for (const ColumnInfo& column : columns) {
    sqlite3_reset(insert.get());
    const ServerType told = ServerTypeOf(column.type);
    BindText(insert.get(), 1, column.name);
    sqlite3_bind_int(insert.get(), 2, object.id);
    sqlite3_bind_int(insert.get(), 3, ++number);
    sqlite3_bind_int(insert.get(), 4, told.number);
    sqlite3_bind_int(insert.get(), 5, told.length);
    sqlite3_bind_int(insert.get(), 6, told.precision);
    sqlite3_bind_int(insert.get(), 7, column.type.scale);
    sqlite3_bind_int(insert.get(), 8, column.nullable ? 1 : 0);
    Type bare = column.type;
    bare.length = 0;
    const std::string name = TypeName(bare);
    BindText(insert.get(), 9, name.substr(0, name.find('(')));
    BindText(insert.get(), 10, object.name);
    sqlite3_bind_int(insert.get(), 11, column.identity ? 1 : 0);
    Step(db_, insert.get());
  }
}

void Schema::EnsureCatalogue() {
  for (const char* column : {"seed", "step"}) {
    const bool old =
        HasTable(db_, "vorek_columns") && !HasColumn(db_, "main", "vorek_columns", column);
    if (!old) continue;
    Run(db_,
        std::string("ALTER TABLE main.vorek_columns ADD COLUMN ") + column + " INTEGER DEFAULT 1");
  }
  if (HasTable(db_, "vorek_objects")) return;
  Run(db_,
      "CREATE TABLE main.vorek_objects (name TEXT NOT NULL COLLATE VOREK PRIMARY KEY, kind "
      "TEXT NOT NULL, source TEXT NOT NULL)");
  Run(db_,
      "CREATE TABLE main.vorek_columns (table_name TEXT NOT NULL COLLATE NOCASE, "
      "column_name TEXT NOT NULL COLLATE NOCASE, type TEXT, identity INTEGER NOT NULL "
      "DEFAULT 0, default_source TEXT, seed INTEGER DEFAULT 1, step INTEGER DEFAULT 1, "
      "PRIMARY KEY (table_name, column_name))");
}

}  // namespace vorek::sqlite
