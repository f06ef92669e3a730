#include "adapters/sqlite/connection.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/sqlite/describe.h"
#include "adapters/sqlite/file_place.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/only_reads.h"
#include "adapters/sqlite/parser.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

// Steps of SQLite's machine: some hundredths of a millisecond, unless a step handles a long text.
constexpr int kStepsBetweenQuestions = 1000;
constexpr std::size_t kBigResult = 100000;  // rows
constexpr std::size_t kKeptBatches = 300;
constexpr std::size_t kKeptLength = 20000;  // longer texts, as of scripts, aren't kept

int FlagsOf(OpenMode mode) {
  switch (mode) {
    case OpenMode::kReadOnly:
      return SQLITE_OPEN_READONLY;
    case OpenMode::kCreate:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case OpenMode::kReadWrite:
      break;
  }
  return SQLITE_OPEN_READWRITE;
}

// True if a read failed for what a program left that ended while it wrote: the file is whole again
// only when somebody who may write has opened it.
bool WantsWriter(sqlite3* db) {
  const int code = db == nullptr ? SQLITE_OK : sqlite3_extended_errcode(db);
  return code == SQLITE_READONLY_ROLLBACK || code == SQLITE_READONLY_RECOVERY ||
         code == SQLITE_READONLY_CANTINIT;
}

[[noreturn]] void ThrowUnfinished(const std::string& path) {
  throw Error(ErrorNumber::kConnection,
              "Cannot open the database '" + path +
                  "': a program ended while it wrote, and only who may write the file can put it "
                  "right.");
}

// A file that isn't there yet, for its user alone; SQLite itself would let others read it. What
// can't be made is told by the opening.
void MakePrivate(const std::string& path) {
  if (path == ":memory:") return;
  const int made = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (made >= 0) ::close(made);
}

// The file's URI for one that can't change: SQLite then needs no files beside it.
std::string FixedFile(const std::string& path) {
  std::string uri = "file:";
  for (const char c : path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    if (c == '%' || c == '?' || c == '#') {
      (uri += '%').append(1, kDigits[byte >> 4U]).append(1, kDigits[byte & 15U]);
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

// A file that can't change would be read without what still stands in these.
void RefuseUnfinished(const std::string& path) {
  for (const char* const ending : {"-wal", "-journal"}) {
    std::error_code none;
    const std::uintmax_t size = std::filesystem::file_size(path + ending, none);
    if (!none && size > 0) ThrowUnfinished(path);
  }
}

// Takes back, or to its end, what such a program left.
void PutRight(const std::string& path) {
  constexpr int kPatience = 30000;  // milliseconds
  sqlite3* db = nullptr;
  int code = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr);
  if (code == SQLITE_OK) code = sqlite3_busy_timeout(db, kPatience);
  if (code == SQLITE_OK) {
    code = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
  }
  sqlite3_close(db);
  if (code != SQLITE_OK) ThrowUnfinished(path);
}

}  // namespace

Connection::Connection(const std::string& path, OpenMode mode, std::chrono::seconds patience)
    : patience_(patience) {
  try {
    Open(path, mode);
  } catch (const Error& error) {
    if (mode != OpenMode::kReadOnly || !WantsWriter(db_.get())) throw Error(error);
    PutRight(path);
    Open(path, mode);
  }
}

void Connection::Open(const std::string& path, OpenMode mode) {
  runner_.reset();
  schema_.reset();
  sqlite3* db = nullptr;
  if (mode == OpenMode::kCreate) MakePrivate(path);
  const bool fixed = mode == OpenMode::kReadOnly && IsOnReadOnlyDisk(path);
  if (fixed) RefuseUnfinished(path);
  const int code = sqlite3_open_v2(
      fixed ? FixedFile(path).c_str() : path.c_str(), &db,
      FlagsOf(mode) | (fixed ? SQLITE_OPEN_URI : 0) | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
      nullptr);
  db_.reset(db);
  if (code != SQLITE_OK) {
    throw Error(code == SQLITE_NOMEM ? ErrorNumber::kOutOfMemory : ErrorNumber::kConnection,
                "Cannot open the database '" + path +
                    "': " + (db == nullptr ? "out of memory" : sqlite3_errmsg(db)) + ".");
  }
  try {
    SetUp(path, mode);
  } catch (const Error& error) {
    // Another one who holds the file may let it go.
    if (error.Is(ErrorNumber::kOutOfMemory)) throw Error(error);
    const bool busy = error.Is(ErrorNumber::kTimeout);
    const std::string why = "Cannot open the database '" + path + "': " + error.Description() + ".";
    throw Error(busy ? ErrorNumber::kTimeout : ErrorNumber::kConnection,
                busy ? "Timeout expired: " + why : why);
  }
}

void Connection::SetUp(const std::string& path, OpenMode mode) {
  sqlite3* db = db_.get();
  if (sqlite3_compileoption_used("UNTESTABLE") != 0) {
    throw Error(ErrorNumber::kConnection, "this build of SQLite can't switch off Bloom filters");
  }
  // The file may come from anybody: nothing in it may run code, write the schema or load a library.
  sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
  sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_limit(db, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_limit(db, SQLITE_LIMIT_LENGTH, 500'000'000);
  sqlite3_limit(db, SQLITE_LIMIT_SQL_LENGTH, 100'000'000);
  sqlite3_progress_handler(db, kStepsBetweenQuestions, OnProgress, this);
  sqlite3_busy_handler(db, OnBusy, this);
  RegisterFunctions(db, [this] { return MustStop(); });
  const auto own = [&](const char* name, int arguments, Function function) {
    // Never from a view or a trigger that the file brings along.
    sqlite3_create_function_v2(db, name, arguments, SQLITE_UTF8 | SQLITE_DIRECTONLY, this, function,
                               nullptr, nullptr, nullptr);
  };
  own("vk_call", -1, OnCall);
  own("vk_variable", 1, OnVariable);
  own("vk_assign", 2, OnAssign);
  own("vk_object_id", 1, OnObjectId);
  own("vk_object_property", 2, OnObjectProperty);
  has_deadline_ = true;
  deadline_ = std::chrono::steady_clock::now() + patience_;
  Run(db, "PRAGMA foreign_keys = ON");
  Run(db, "PRAGMA cache_size = -32768");  // kibibytes: joins over an index halve their time by it
  schema_ = std::make_unique<Schema>(db);
  schema_->SetCheckpoint([this] { AskProgress(0); });
  schema_->Refresh();  // the first read: fails for a file that is no database
  if (mode != OpenMode::kReadOnly && sqlite3_db_readonly(db, "main") == 1 &&
      mode == OpenMode::kCreate) {
    throw Error(ErrorNumber::kConnection, "it can't be written");
  }
  runner_ = std::make_unique<Runner>(db, *schema_);
  wants_log_ = sqlite3_db_readonly(db, "main") == 0 && IsOnLocalDisk(path);
}

// Readers and a writer don't wait for each other where the file has a write-ahead log, which it
// keeps from then on. One that is being read in another way just now gets it another time.
void Connection::TakeLog() {
  wants_log_ = false;
  sqlite3* db = db_.get();
  sqlite3_busy_handler(db, nullptr, nullptr);
  sqlite3_exec(db, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
  sqlite3_busy_handler(db, OnBusy, this);
}

bool Connection::MustStop() {
  if (stop_ != Stop::kNone) return true;
  if (cancelled_) {
    stop_ = Stop::kCancelled;
    return true;
  }
  const Time now = std::chrono::steady_clock::now();
  if (has_deadline_ && now >= deadline_) {
    stop_ = Stop::kTimeout;
    return true;
  }
  constexpr auto kQuestionEvery = std::chrono::milliseconds(20);
  if (options_ != nullptr && options_->progress && now >= next_question_) {
    next_question_ = now + kQuestionEvery;
    if (!options_->progress(rows_)) {
      stop_ = Stop::kCancelled;
      return true;
    }
  }
  return false;
}

// What a question throws can't go through SQLite's own frames: it ends the statement, and goes on
// behind it.
bool Connection::MustStopOrFailed() noexcept {
  try {
    return MustStop();
  } catch (const std::exception&) {
    failure_ = std::current_exception();
    return true;
  }
}

int Connection::OnProgress(void* self) {
  return static_cast<Connection*>(self)->MustStopOrFailed() ? 1 : 0;
}

int Connection::OnBusy(void* self, int count) {
  auto* connection = static_cast<Connection*>(self);
  if (connection->MustStopOrFailed()) return 0;
  std::this_thread::sleep_for(std::chrono::milliseconds(std::min(1 + count, 25)));
  return 1;
}

// The statement fails with what its function threw.
void Connection::FailCall(sqlite3_context* context, const std::exception& error) noexcept {
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
    sqlite3_result_error_nomem(context);
  } else {
    sqlite3_result_error(context, error.what(), -1);
  }
}

void Connection::OnCall(sqlite3_context* context, int count, sqlite3_value** values) {
  auto* connection = static_cast<Connection*>(sqlite3_user_data(context));
  try {
    if (count < 1) throw Error(ErrorNumber::kSyntax, "vk_call takes a function's name.");
    std::vector<Cell> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(CellOf(values[i]));
    ResultCell(context,
               connection->runner_->Call(std::string(TextOf(values[0])), std::move(arguments)));
  } catch (const std::exception& error) {
    FailCall(context, error);
  }
}

void Connection::OnVariable(sqlite3_context* context, int, sqlite3_value** values) {
  auto* connection = static_cast<Connection*>(sqlite3_user_data(context));
  try {
    ResultCell(context, connection->runner_->Current(std::string(TextOf(values[0]))));
  } catch (const std::exception& error) {
    FailCall(context, error);
  }
}

void Connection::OnAssign(sqlite3_context* context, int, sqlite3_value** values) {
  auto* connection = static_cast<Connection*>(sqlite3_user_data(context));
  try {
    connection->runner_->Assign(std::string(TextOf(values[0])), CellOf(values[1]));
    sqlite3_result_value(context, values[1]);
  } catch (const std::exception& error) {
    FailCall(context, error);
  }
}

void Connection::OnObjectId(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  auto* connection = static_cast<Connection*>(sqlite3_user_data(context));
  try {
    // "owner.name", "[owner].[name]", "tempdb..#t"
    const std::string text(TextOf(values[0]));
    std::string name;
    for (const Token& token : Tokenize(text)) {
      if (token.kind == TokenKind::kName || token.kind == TokenKind::kQuotedName)
        name = token.value;
    }
    Schema& schema = *connection->schema_;
    const bool found = schema.FindTable(name) != nullptr || schema.FindModule(name) != nullptr;
    found ? sqlite3_result_int(context, ObjectId(name)) : sqlite3_result_null(context);
  } catch (const std::exception& error) {
    FailCall(context, error);
  }
}

void Connection::OnObjectProperty(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kProperties = {{
      {"isusertable", "U"},
      {"istable", "U"},
      {"isview", "V"},
      {"isprocedure", "P"},
      {"isscalarfunction", "FN"},
      {"istablefunction", "TF"},
  }};
  auto* connection = static_cast<Connection*>(sqlite3_user_data(context));
  const std::string_view wanted = TextOf(values[1]);
  const auto* property =
      std::find_if(kProperties.begin(), kProperties.end(),
                   [wanted](const auto& row) { return SameWord(row.first, wanted); });
  if (property == kProperties.end()) return sqlite3_result_null(context);
  try {
    for (const ObjectRow& object : connection->schema_->Objects()) {
      if (object.id != sqlite3_value_int64(values[0])) continue;
      return sqlite3_result_int(context, object.kind == property->second ? 1 : 0);
    }
    sqlite3_result_null(context);
  } catch (const std::exception& error) {
    FailCall(context, error);
  }
}

void Connection::AskProgress(std::size_t rows) {
  rows_ = std::max(rows_, rows);
  if (!MustStop()) return;
  throw Error(ErrorNumber::kCancelled, "interrupted");
}

std::shared_ptr<Batch> Connection::Parse(std::string_view text, int first_line) {
  const auto checkpoint = [this] { AskProgress(0); };
  if (first_line > 0) return Parser(SourceText(text, first_line), checkpoint).ParseBatch();
  const std::string key(text);
  const auto found = batches_.find(key);
  if (found != batches_.end()) return found->second;
  std::shared_ptr<Batch> batch = Parser(text, checkpoint).ParseBatch();
  if (batches_.size() >= kKeptBatches) batches_.clear();
  if (key.size() <= kKeptLength) batches_.emplace(key, batch);
  return batch;
}

void Connection::Rethrow(const Error& error) {
  if (failure_) {
    ErrorOfMemory([this] { std::rethrow_exception(std::exchange(failure_, nullptr)); });
  }
  if (stop_ == Stop::kTimeout || (error.Is(ErrorNumber::kTimeout) && stop_ != Stop::kCancelled)) {
    throw Error(ErrorNumber::kTimeout, error.Is(ErrorNumber::kTimeout)
                                           ? "Timeout expired: " + error.Description() + "."
                                           : "Timeout expired.");
  }
  if (stop_ == Stop::kCancelled) {
    throw Error(ErrorNumber::kCancelled, "Operation was cancelled.");
  }
  throw Error(error.Number(), error.Description());
}

template <typename Work>
auto Connection::Within(const ExecuteOptions& options, const Work& work) {
  if (executing_) {
    throw Error(ErrorNumber::kInvalidCall, "The connection is busy with another statement.");
  }
  // Ends the run for whatever reason.
  struct Guard {
    Connection& connection;
    explicit Guard(Connection& self) : connection(self) { connection.executing_ = true; }
    ~Guard() {
      connection.executing_ = false;
      connection.options_ = nullptr;
    }
  } const guard(*this);
  cancelled_ = false;
  stop_ = Stop::kNone;
  failure_ = nullptr;
  rows_ = 0;
  options_ = &options;
  has_deadline_ = options.timeout_seconds > 0;
  const Time now = std::chrono::steady_clock::now();
  deadline_ = now + std::chrono::seconds(options.timeout_seconds);
  next_question_ = now;
  try {
    return ErrorOfMemory([&] {
      schema_->Refresh();
      return work();
    });
  } catch (const Error& error) {
    Rethrow(error);
  }
}

ResultSetPtr Connection::Execute(std::string_view text, const ExecuteOptions& options) {
  return Within(options, [&] {
    const std::shared_ptr<Batch> batch = Parse(text, options.script_line);
    if (wants_log_ && sqlite3_get_autocommit(db_.get()) != 0 && !OnlyReads(batch->statements)) {
      TakeLog();
    }
    ResultSetPtr result =
        runner_->Run(*batch, options, [this](std::size_t rows) { AskProgress(rows); });
    // Who takes a big result needs the memory more than the pages that it was read from.
    if (result != nullptr && result->rows >= kBigResult) sqlite3_db_release_memory(db_.get());
    return result;
  });
}

std::optional<ResultSetPtr> Connection::Describe(std::string_view text, int timeout_seconds) {
  const ExecuteOptions options{timeout_seconds, {}};
  return Within(options, [&]() -> std::optional<ResultSetPtr> {
    return sqlite::Describe(db_.get(), *schema_,
                            *Parser(text, [this] { AskProgress(0); }).ParseBatch());
  });
}

}  // namespace vorek::sqlite
