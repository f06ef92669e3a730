#ifndef VOREK_ADAPTERS_ODBC_SESSION_H_
#define VOREK_ADAPTERS_ODBC_SESSION_H_

#include <sql.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/odbc/connection_text.h"
#include "adapters/odbc/handle.h"
#include "adapters/odbc/row_reader.h"
#include "adapters/odbc/stopper.h"
#include "vorek/database.h"
#include "vorek/result_set.h"

namespace vorek::odbc {

// An open connection of a driver and the statement that runs on it. Its calls return when the
// driver returns, which may be never: see Connection.
class Session {
 public:
  // Asked after each block with the rows read so far; false cancels.
  using Progress = std::function<bool(std::size_t rows)>;

  explicit Session(std::shared_ptr<Environment> environment);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Throws Error(kConnection).
  void Open(const ConnectionText& text);

  // As DatabaseConnection::Execute. progress may be empty.
  ResultSetPtr Execute(std::string_view text, int timeout_seconds, const ResultLimits& limits,
                       const Progress& progress);
  // As DatabaseConnection::Describe.
  ResultSetPtr Describe(std::string_view text, int timeout_seconds);

  // As Stopper::Cancel.
  bool Cancel() noexcept { return stopper_.Cancel(); }

 private:
  void Connect(const ConnectionText& text);
  void ReadTraits();
  bool KnowsUnicode();
  std::string Name(SQLUSMALLINT kind) const;
  SQLRETURN ExecuteDirect(SQLHANDLE statement, std::string_view text);
  SQLRETURN Prepare(SQLHANDLE statement, std::string_view text);
  void Settle();
  template <typename Work>
  ResultSetPtr Settled(Work work);
  ResultSetPtr RunDescribe(std::string_view text, int timeout_seconds);
  ResultSetPtr RunExecute(std::string_view text, int timeout_seconds, const ResultLimits& limits,
                          const Progress& progress);
  bool NextResult(SQLHANDLE statement);
  void Check(SQLRETURN code, SQLHANDLE statement);
  [[noreturn]] void Fail(SQLHANDLE statement);
  ResultSetPtr ReadFirstRows(SQLHANDLE statement, const ResultLimits& limits,
                             const Progress& progress);
  void FinishRest(SQLHANDLE statement);

  std::shared_ptr<Environment> environment_;
  ConnectionHandle handle_;
  bool open_ = false;
  DriverTraits traits_;
  Stopper stopper_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_SESSION_H_
