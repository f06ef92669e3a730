#ifndef VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_
#define VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/work_meter.h"

// What the dialect computes and SQLite doesn't, given to a connection as functions whose names
// begin with "vk_". None of them depends on anything but its arguments.
namespace vorek::sqlite {

// All of them, and the collation VOREK: the Persian alphabet, no regard to case nor to trailing
// blanks. What SQLite would do faster by the bytes of texts is switched off. must_stop is asked at
// bounded steps of their work; true ends the statement with SQLITE_INTERRUPT.
void RegisterFunctions(sqlite3* db, std::function<bool()> must_stop = {});

// The order of the collation: less than, equal to or greater than 0.
int CompareTexts(std::string_view a, std::string_view b);

// Where functions are registered, and the meter that they share.
struct Registry {
  sqlite3* db;
  std::shared_ptr<WorkMeter> meter;
};

// Parts of RegisterFunctions, a file each.
void RegisterTextFunctions(const Registry& registry);
void RegisterNumberFunctions(const Registry& registry);
void RegisterConversions(const Registry& registry);
void RegisterDateFunctions(const Registry& registry);
void RegisterAggregates(sqlite3* db);
void RegisterLike(const Registry& registry);

// LIKE of the dialect: % _ [a-z] [^x], without regard to case. escape is 0 for none.
bool Like(std::string_view text, std::string_view pattern, char32_t escape);

// --- For those files. ---

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
// arguments is -1 for any number. With try_name, the function is registered a second time under it,
// and Fail makes NULL there. The meter counts the bytes of the arguments. data is for DataOf.
void Register(const Registry& registry, const char* name, int arguments, Function function,
              const char* try_name = nullptr, const void* data = nullptr);
// The same for a function that gives another value each time.
void RegisterVolatile(const Registry& registry, const char* name, int arguments, Function function);

// --- In a function of Register alone. ---

// True under its second name.
bool IsTwin(sqlite3_context* context);
const void* DataOf(sqlite3_context* context);
// Counts work beyond its arguments. True if the run has to end: the function returns at once.
bool MustStop(sqlite3_context* context, std::size_t work);
// An error with the text, or NULL in a function that only tries.
void Fail(sqlite3_context* context, const std::string& message);
void FailOverflow(sqlite3_context* context, std::string_view type);

// --- In any function. ---

std::string_view TextOf(sqlite3_value* value);
void ResultText(sqlite3_context* context, std::string_view text);
std::string OverflowMessage(std::string_view type);
void FailDivision(sqlite3_context* context);
// True if one of the arguments is NULL; the result is NULL then.
bool AnyNull(sqlite3_context* context, int count, sqlite3_value** values);
bool IsInteger(sqlite3_value* value);

inline constexpr char kDivideByZero[] = "Divide by zero error encountered.";

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_
