#include <algorithm>

#include "adapters/sqlite/runner.h"
#include "vorek/error.h"

namespace vorek::sqlite {

void Runner::BeginWriting() {
  // Taking the writer's place at once avoids that two wait for each other.
  vorek::sqlite::Run(db_, sqlite3_db_readonly(db_, "main") == 1 ? "BEGIN" : "BEGIN IMMEDIATE");
}

void Runner::RunTransaction(const Statement& statement) {
  const bool open = sqlite3_get_autocommit(db_) == 0 || waits_to_write_;
  if (statement.kind == StatementKind::kBegin) {
    if (!open) {
      transactions_ = 0;
      waits_to_write_ = tell_lines_;
      if (!waits_to_write_) BeginWriting();
    }
    ++transactions_;
    return;
  }
  const bool commits = statement.kind == StatementKind::kCommit;
  const std::string word = commits ? "COMMIT" : "ROLLBACK";
  if (!open) {
    transactions_ = 0;
    throw Error(ErrorNumber::kSyntax,
                "The " + word + " TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  }
  if (tell_lines_ && (!commits || transactions_ <= 1)) {
    throw Error(ErrorNumber::kSyntax, "A " + word +
                                          " would end the script's own transaction, in which all "
                                          "of it runs or nothing.");
  }
  if (!commits) return Rollback();
  if (transactions_ <= 1) {
    if (!waits_to_write_) vorek::sqlite::Run(db_, "COMMIT");
    waits_to_write_ = false;
  }
  transactions_ = std::max(0, transactions_ - 1);
}

void Runner::Rollback() {
  if (sqlite3_get_autocommit(db_) == 0) vorek::sqlite::Run(db_, "ROLLBACK");
  transactions_ = 0;
  waits_to_write_ = false;
  schema_.Changed();
  schema_.TemporaryChanged();
  // A table variable would keep its rows on a server: better none than those of before.
  for (const Frame* frame = frame_; frame != nullptr; frame = frame->caller) {
    for (const std::string& name : frame->temporary_tables) {
      if (name.rfind("#@", 0) == 0) {
        vorek::sqlite::Run(db_, "DROP TABLE IF EXISTS temp." + QuoteName(name));
      }
    }
  }
}

}  // namespace vorek::sqlite
