#ifndef VOREK_ADAPTERS_SQLITE_CONNECTION_H_
#define VOREK_ADAPTERS_SQLITE_CONNECTION_H_

#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "adapters/sqlite/runner.h"
#include "adapters/sqlite/schema.h"
#include "vorek/database.h"

namespace vorek::sqlite {

enum class OpenMode { kReadWrite, kReadOnly, kCreate };

// A connection to one file.
class Connection : public DatabaseConnection {
 public:
  // Throws Error, naming the file: kTimeout if another one holds it, else kConnection.
  Connection(const std::string& path, OpenMode mode, std::chrono::seconds patience);
  ~Connection() override = default;

  ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override;
  std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds) override;
  void Cancel() noexcept override { cancelled_ = true; }

  // The text as it runs in SQLite, statement by statement; nothing runs.
  std::string Explain(std::string_view text);
  std::string ExplainPlan(std::string_view text);

 private:
  enum class Stop { kNone, kCancelled, kTimeout };
  using Time = std::chrono::steady_clock::time_point;

  static int OnProgress(void* self);
  static int OnBusy(void* self, int count);
  static void OnCall(sqlite3_context* context, int count, sqlite3_value** values);
  static void OnVariable(sqlite3_context* context, int count, sqlite3_value** values);
  static void OnAssign(sqlite3_context* context, int count, sqlite3_value** values);
  static void OnObjectProperty(sqlite3_context* context, int count, sqlite3_value** values);
  static void OnObjectId(sqlite3_context* context, int count, sqlite3_value** values);
  void Open(const std::string& path, OpenMode mode);
  void SetUp(const std::string& path, OpenMode mode);
  void TakeLog();
  bool MustStop();
  bool MustStopOrFailed() noexcept;
  static void FailCall(sqlite3_context* context, const std::exception& error) noexcept;
  void AskProgress(std::size_t rows);
  // Does a piece of work on the schema and the database within the time.
  template <typename Work>
  auto Within(const ExecuteOptions& options, const Work& work);
  std::shared_ptr<Batch> Parse(std::string_view text, int first_line);
  [[noreturn]] void Rethrow(const Error& error);

  struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
  };

  std::unique_ptr<sqlite3, Closer> db_;
  std::unique_ptr<Schema> schema_;
  std::unordered_map<std::string, std::shared_ptr<Batch>> batches_;
  std::unique_ptr<Runner> runner_;
  bool wants_log_ = false;  // before the first text that writes

  // Of the text that runs now.
  std::atomic<bool> cancelled_{false};
  bool executing_ = false;
  Stop stop_ = Stop::kNone;
  std::exception_ptr failure_;  // of a question that SQLite asked
  bool has_deadline_ = false;
  std::chrono::seconds patience_;  // at the opening
  Time deadline_;
  Time next_question_;
  std::size_t rows_ = 0;
  const ExecuteOptions* options_ = nullptr;
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_CONNECTION_H_
