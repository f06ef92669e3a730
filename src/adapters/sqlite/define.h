#ifndef VOREK_ADAPTERS_SQLITE_DEFINE_H_
#define VOREK_ADAPTERS_SQLITE_DEFINE_H_

#include <string>
#include <vector>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/schema.h"
#include "adapters/sqlite/syntax.h"

struct sqlite3;

namespace vorek::sqlite {

// CREATE, ALTER and DROP: the dialect's definitions as SQLite's, with what SQLite's schema can't
// hold written into the tables vorek_objects and vorek_columns. Throws Error.
class Definer {
 public:
  Definer(sqlite3* db, Schema& schema, const SourceText& source)
      : db_(db), schema_(schema), source_(source) {}

  void Define(const Statement& statement);
  // The identity of a table that was emptied begins anew.
  void RestartIdentity(const ObjectName& name);
  // The table of SELECT INTO.
  void CreateTable(const ObjectName& name, const std::vector<OutputColumn>& columns);

 private:
  void CreateTable(const Statement& statement);
  void CreateIndex(const Statement& statement);
  void CreateModule(const Statement& statement);
  void AlterTable(const Statement& statement);
  void AddColumn(const TableInfo& table, const ColumnDefinition& column, bool with_values);
  void AddConstraint(const TableInfo& table, const Constraint& constraint, bool unchecked);
  void AddForeignKey(const TableInfo& table, const Constraint& constraint, bool unchecked);
  void AddCheck(const TableInfo& table, const Constraint& constraint, bool unchecked);
  void DropParts(const TableInfo& table, const Statement& statement);
  void DropTable(const Statement& statement);
  void DropIndex(const Statement& statement);
  void DropModule(const Statement& statement);
  void TellOthers();

  std::string ColumnSql(const Statement& statement, const ColumnDefinition& column,
                        const TableInfo& table) const;
  std::string ConstraintSql(const Statement& statement, const Constraint& constraint,
                            const TableInfo& table) const;
  std::string ForeignKeySql(const Statement& statement, const Constraint& constraint) const;
  const ColumnDefinition* RowKey(const Statement& statement) const;
  TableInfo Shape(const Statement& statement) const;
  void Remember(const TableInfo& table, const std::string& column, const std::string& type,
                bool identity, const std::string& default_source, long long seed = 1,
                long long step = 1);
  // What is kept of one column, or of all.
  void Forget(const TableInfo& table, const std::string& column = "");
  // The identity's number before the next.
  void SetLast(const TableInfo& table, long long last);
  // A unique index takes one NULL, where SQLite's takes any number.
  void AddOneNull(const TableInfo& table, const std::string& index,
                  const std::vector<std::string>& columns, const std::string& condition);
  std::string DefaultValue(const Expr& expr, const Type& type) const;
  const TableInfo& NeedTable(const ObjectName& name) const;
  void RefuseTaken(const ObjectName& name) const;
  std::vector<std::string> ReferencedColumns(const Constraint& constraint,
                                             const TableInfo& parent) const;

  sqlite3* db_;
  Schema& schema_;
  SourceText source_;
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_DEFINE_H_
