#ifndef VOREK_ADAPTERS_SQLITE_SCHEMA_H_
#define VOREK_ADAPTERS_SQLITE_SCHEMA_H_

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/syntax.h"
#include "adapters/sqlite/type.h"

namespace vorek::sqlite {

struct ColumnInfo {
  std::string name;
  Type type;
  bool nullable = true;
  bool collated = false;  // SQLite compares it by the collation VOREK without being told
  bool identity = false;
  bool computed = false;
  bool row_key = false;  // SQLite keeps it as the row number
  long long seed = 1;    // of an identity
  long long step = 1;
  std::string default_source;  // in the dialect's words, or empty

  // SQLite's own count goes from 1 by 1.
  bool CountsApart() const { return identity && (step != 1 || seed < 1); }
};

struct TableInfo {
  std::string name;
  bool temporary = false;
  bool is_view = false;  // one that another program made
  std::vector<ColumnInfo> columns;

  const ColumnInfo* Find(std::string_view column) const;
};

// A view, procedure or function kept in the database in its own words.
struct ModuleInfo {
  std::string name;
  std::string kind;  // "V", "P", "FN", "IF", "TF"
  std::string source;
  std::shared_ptr<Batch> batch;  // read from the source; one statement

  const Statement& Definition() const { return *batch->statements.front(); }
};

// One object as sysobjects lists it.
struct ObjectRow {
  std::string name;
  std::string kind;  // "U", "V", "P", "FN"
  int id = 0;
};

// What SET has changed for the connection.
struct Session {
  bool ends_transactions = false;   // XACT_ABORT: an error takes the whole transaction back
  bool quotes_names = true;         // QUOTED_IDENTIFIER: "x" is a name
  std::string date_format = "mdy";  // in which order a text's numbers are day, month and year
};

// What the database holds, read from it when it is asked for and kept until it changes. What
// SQLite's own schema can't tell stands in two tables of the file: vorek_objects (the modules) and
// vorek_columns (types of row keys, identities, defaults).
class Schema {
 public:
  explicit Schema(sqlite3* db) : db_(db) {}

  // What is asked now and then all along a translation; it throws when the time is over.
  void SetCheckpoint(std::function<void()> checkpoint) { checkpoint_ = std::move(checkpoint); }
  void KeepTime() {
    constexpr unsigned kSteps = 256;
    if (++steps_ % kSteps == 0) checkpoint_();
  }

  // Forgets what was read if somebody changed the schema since. Called before each text.
  void Refresh();
  // Told by whoever changes it on this connection.
  void Changed();
  void TemporaryChanged();

  const Session& CurrentSession() const { return session_; }
  void SetSession(const Session& session);

  // Counts of the changes, for those who keep translations.
  long long Stamp() const { return stamp_; }
  long long TemporaryStamp() const { return temporary_stamp_; }

  // Null if there is no such table, or module. Names in any case; "#t" is a temporary table.
  const TableInfo* FindTable(const std::string& name);
  const ModuleInfo* FindModule(const std::string& name);
  std::vector<ObjectRow> Objects();

  // Fills the temporary tables behind sysobjects and syscolumns, if they aren't up to date.
  void FillCatalogueViews();

  // Makes the tables vorek_objects and vorek_columns where they are missing.
  void EnsureCatalogue();

 private:
  void LoadColumns(TableInfo& table);
  void OverlayColumns(TableInfo& table);
  void FillObjects();
  void FillColumns(const ObjectRow& object);

  sqlite3* db_;
  Session session_;
  PreparedPtr version_query_;
  long long stamp_ = 1;
  long long temporary_stamp_ = 1;
  long long version_ = -1;  // SQLite's schema version when the maps were empty
  long long filled_ = -1;   // the stamp that the catalogue views were filled at
  std::function<void()> checkpoint_ = [] {};
  unsigned steps_ = 0;
  std::unordered_map<std::string, std::unique_ptr<TableInfo>> tables_;
  std::unordered_map<std::string, std::unique_ptr<TableInfo>> temporary_tables_;
  std::unordered_map<std::string, std::unique_ptr<ModuleInfo>> modules_;
};

// The key that names are looked up by, the same for every way to write a name's letters.
std::string NameKey(std::string_view name);
// The number of an object in sysobjects, made from its name.
int ObjectId(std::string_view name);
// Names that belong to SQLite or to this provider.
bool IsInternalName(std::string_view name);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_SCHEMA_H_
