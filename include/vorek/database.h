#ifndef VOREK_DATABASE_H_
#define VOREK_DATABASE_H_

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/error.h"
#include "vorek/result_set.h"

namespace vorek {

// How much one statement may bring into memory, so that a query without an end is refused before
// the machine has nothing left. 0 for no bound.
struct ResultLimits {
  std::size_t rows = 5'000'000;
  std::size_t bytes = std::size_t{2} << 30U;  // of its values, as they are held
};

// How one statement is run.
struct ExecuteOptions {
  int timeout_seconds = 30;  // from the call to the last row; 0 waits for ever
  // Asked now and then while rows are read, with the rows read so far; false cancels the statement
  // (ErrorNumber::kCancelled). Called on the calling thread.
  std::function<bool(std::size_t rows)> progress;
  // The text is a piece of a script that begins at this line of it: messages count their lines from
  // there and always tell the line that failed. 0 for a text that stands by itself.
  int script_line = 0;
  // Row sets behind the first one, and what PRINT and warnings tell, as they come. The embedded
  // database tells both; a provider that doesn't leaves them out.
  std::function<void(ResultSetPtr rows)> more_rows = nullptr;
  std::function<void(std::string_view text)> message = nullptr;
  // A result beyond them is Error(kOutOfMemory). Asked every few thousand rows.
  ResultLimits limits = {};
};

// An open connection. Used from one thread, save for Cancel.
class DatabaseConnection {
 public:
  virtual ~DatabaseConnection() = default;

  // Runs a text, one or more statements in the dialect of SQL Server, and reads its first row set
  // whole. Null if the text gives no row set. Throws Error with ADO's numbers and the server's own
  // words: kConnection for a lost connection, kSyntax, kMissingObject, kTimeout, kCancelled.
  virtual ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) = 0;

  // Reads a text and looks up what it names without running it: no row is read, nothing changed.
  // Gives the columns of its first row set, without rows; null where only a run can tell them.
  // Nothing from a provider that knows no such look. Throws as Execute does.
  virtual std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds);

  // Stops the statement that runs now, from any thread; without one, no effect.
  virtual void Cancel() noexcept = 0;

  // Asks the server for a sign of life, within some seconds; nothing of the caller's runs. False
  // for a connection that is of no use any more, as after the server was started again. Always true
  // from a provider without a server.
  virtual bool IsAlive() { return true; }
};

inline std::optional<ResultSetPtr> DatabaseConnection::Describe(std::string_view, int) {
  return std::nullopt;
}

// A kind of database, named by the "Provider=" piece of a connection string.
class DatabaseProvider {
 public:
  virtual ~DatabaseProvider() = default;

  // True if the provider answers to this name ("VorekSQLite", "SQLOLEDB.1"), in any case.
  virtual bool Answers(std::string_view provider_name) const = 0;

  // Opens a connection by the whole connection string. Throws Error with the reason, in which no
  // password stands: kTimeout for a file that another one holds, else kConnection.
  virtual std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) = 0;

  // The same, given up with Error(kCancelled) once goes_on says no: it is asked now and then on the
  // calling thread while a server is waited for. A provider that connects at once needn't ask.
  virtual std::unique_ptr<DatabaseConnection> ConnectWhile(std::string_view connection_string,
                                                           const std::function<bool()>& goes_on);
};

inline std::unique_ptr<DatabaseConnection> DatabaseProvider::ConnectWhile(
    std::string_view connection_string, const std::function<bool()>&) {
  return Connect(connection_string);
}

}  // namespace vorek

#endif  // VOREK_DATABASE_H_
