#ifndef VOREK_ADAPTERS_SQLITE_RUNNER_H_
#define VOREK_ADAPTERS_SQLITE_RUNNER_H_

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/cell.h"
#include "adapters/sqlite/failure.h"
#include "adapters/sqlite/plan.h"
#include "adapters/sqlite/schema.h"
#include "adapters/sqlite/syntax.h"
#include "vorek/database.h"
#include "vorek/result_set.h"

namespace vorek::sqlite {

// Runs batches, procedures and functions statement by statement. One for each connection.
class Runner {
 public:
  Runner(sqlite3* db, Schema& schema);

  // Runs a batch and returns its first row set, or null. checkpoint is called while rows are read.
  // Throws the first error, behind what the batch does in spite of it.
  ResultSetPtr Run(Batch& batch, const ExecuteOptions& options,
                   const std::function<void(std::size_t)>& checkpoint);
  // A scalar function, called by SQLite in the middle of a statement.
  Cell Call(const std::string& function, std::vector<Cell> arguments);
  // A variable's value in the middle of the SELECT that assigns to it.
  Cell Current(const std::string& variable) const;
  void Assign(const std::string& variable, Cell value);

 private:
  enum class Flow { kNext, kBreak, kContinue, kReturn, kGoto };

  // One running batch or module: its variables and what it made.
  struct Frame {
    SourceText source;
    Variables types;
    std::map<std::string, Cell> values;
    std::set<std::string> temporary_tables;
    Cell returned;
    Cell identity;  // SCOPE_IDENTITY()
    bool is_module = false;
    std::string procedure;
    std::string label;  // that a GOTO is on its way to
    Session session;    // as it was before the module
    const Frame* caller = nullptr;
  };
  // Rows taken aside: a procedure's for INSERT ... EXEC, or a cursor's.
  struct Sink {
    std::vector<OutputColumn> columns;
    std::vector<std::vector<Cell>> rows;
  };
  struct Cursor {
    Statement* statement = nullptr;
    Frame* frame = nullptr;  // that declared it
    bool open = false;
    std::size_t next = 0;
    Sink rows;
  };

  // A function that fills a table, while it runs: nothing of it is left to the statement.
  class Filling {
   public:
    Filling(Runner& runner, const std::string& function, const Frame& frame);
    ~Filling();
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

   private:
    Runner& runner_;
    const Frame& frame_;
    std::string key_;
    std::int64_t row_count_;
    int last_error_;
  };

  Flow RunAll(std::vector<StatementPtr>& statements, Frame& frame);
  Flow RunOne(Statement& statement, Frame& frame);
  Flow RunFlow(Statement& statement, Frame& frame);
  void RunAction(Statement& statement, Frame& frame);
  Flow RunWhile(Statement& statement, Frame& frame);
  void RunQuery(Statement& statement, Frame& frame);
  void RunSelectInto(Statement& statement, Frame& frame);
  void RunInsert(Statement& statement, Frame& frame);
  void RunInsertOfProcedure(Statement& statement, Frame& frame);
  // Work on a table that stays as a whole or not at all, its definitions included.
  void Whole(bool temporary, const std::function<void()>& work);
  void RunChange(Compiled& compiled, Frame& frame);
  void RunDeclare(Statement& statement, Frame& frame);
  void DeclareTable(Statement& table, Frame& frame);
  void DropVariables(Frame& frame);
  void RunSet(Statement& statement, Frame& frame);
  void RunExecute(Statement& statement, Frame& frame);
  void RunExecuteText(Statement& statement, Frame& frame);
  bool RunSystemProcedure(Statement& statement, Frame& frame);
  void RunExecuteSql(Statement& statement, Frame& frame);
  void RunDefinition(Statement& statement, Frame& frame);
  void RunTransaction(const Statement& statement);
  void Rollback();
  void BeginWriting();
  void RunTruncate(Statement& statement, Frame& frame);
  void RunSetting(const Statement& statement);
  void RunRaise(Statement& statement, Frame& frame);
  Flow RunTry(Statement& statement, Frame& frame);
  void RunCursor(Statement& statement, Frame& frame);
  void Fetch(Statement& statement, Cursor& cursor, Frame& frame);
  void DropCursors(const Frame& frame);
  Failure FailureOf(const Error& error, const Statement& statement, const Frame& frame) const;
  void Tell(const std::string& message) const;
  Frame NewFrame(const SourceText& source, bool is_module) const;
  void ReadAside(Compiled& compiled, const Frame& frame);
  void TakeRows(Compiled& compiled);
  bool Holds(Statement& statement, Frame& frame);
  Cell Evaluate(Statement& statement, int piece, const Expr& expr, const Type* type, Frame& frame);
  void TakeArguments(Statement& statement, const Statement& definition, Frame& caller, Frame& frame,
                     std::size_t first = 0);
  void GiveBack(const Statement& statement, const Statement& definition, Frame& caller,
                const Frame& frame, std::size_t first = 0);
  void RunModule(std::vector<StatementPtr>& statements, Frame& frame);
  void LeaveModule(Frame& frame);

  using Translate = std::function<Translation(Binder&)>;
  Compiled& Compile(Statement& statement, int piece, Frame& frame, const Translate& translate);
  // Binds the variables, and runs the functions whose rows the statement reads.
  void BindAll(Compiled& compiled, const Frame& frame);
  void BindParameters(sqlite3_stmt* prepared, const Translation& translation, const Frame& frame);
  void MakeFilled(const Translation& translation, Frame& frame);
  void Fill(const Filled& filled, const Frame& frame);
  void RunFilling(const Filled& filled, Statement& definition, Frame& frame);
  Cell SystemValue(const std::string& name, const Frame& frame) const;

  sqlite3* db_;
  Schema& schema_;
  ResultSetPtr result_;
  const Frame* frame_ = nullptr;  // that runs
  Frame* assigning_ = nullptr;
  Sink* sink_ = nullptr;
  const Frame* untranslated_ = nullptr;    // whose statement couldn't be translated
  std::optional<Error> pending_;           // the first error that its batch went on behind
  std::optional<Failure> raised_;          // by RAISERROR or THROW, on its way
  std::map<std::string, Cursor> cursors_;  // by their lower-case names
  int fetch_status_ = 0;
  std::vector<Failure> caught_;  // by the CATCH blocks that run, innermost last
  Failure failed_;               // the last error
  bool passing_ = false;         // it is on its way out
  int last_error_ = 0;
  int tries_ = 0;
  int functions_ = 0;              // that run
  std::set<std::string> filling_;  // functions whose tables are being filled
  int statements_ = 0;             // that have a number
  ExecuteOptions options_;
  bool collect_ = true;  // the first row set is still to come
  std::function<void(std::size_t)> checkpoint_;
  bool tell_lines_ = false;
  int depth_ = 0;
  int transactions_ = 0;
  bool waits_to_write_ = false;  // a script's transaction, until it changes something
  std::int64_t row_count_ = 0;
  Cell identity_;
  Cell own_identity_;  // of the texts themselves, whatever procedures inserted
  std::vector<std::shared_ptr<Compiled>> retired_;  // programs that a newer one took the place of
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_RUNNER_H_
