#ifndef VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_
#define VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_

#include <sqlite3.h>

#include <string>
#include <string_view>

// What the dialect computes and SQLite doesn't, given to a connection as functions whose names
// begin with "vk_". None of them depends on anything but its arguments.
namespace vorek::sqlite {

// All of them, and the collation VOREK: the Persian alphabet, no regard to case nor to trailing
// blanks. What SQLite would do faster by the bytes of texts is switched off.
void RegisterFunctions(sqlite3* db);

// The order of the collation: less than, equal to or greater than 0.
int CompareTexts(std::string_view a, std::string_view b);

// Parts of RegisterFunctions, a file each.
void RegisterTextFunctions(sqlite3* db);
void RegisterNumberFunctions(sqlite3* db);
void RegisterConversions(sqlite3* db);
void RegisterDateFunctions(sqlite3* db);
void RegisterAggregates(sqlite3* db);
void RegisterLike(sqlite3* db);

// LIKE of the dialect: % _ [a-z] [^x], without regard to case. escape is 0 for none.
bool Like(std::string_view text, std::string_view pattern, char32_t escape);

// --- For those files. ---

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
// arguments is -1 for any number. With try_name, the function is registered a second time under it,
// and Fail makes NULL there (sqlite3_user_data tells which of both runs).
void Register(sqlite3* db, const char* name, int arguments, Function function,
              const char* try_name = nullptr);

std::string_view TextOf(sqlite3_value* value);
void ResultText(sqlite3_context* context, std::string_view text);
// An error with the text, or NULL in a function that only tries.
void Fail(sqlite3_context* context, const std::string& message);
void FailOverflow(sqlite3_context* context, std::string_view type);
void FailDivision(sqlite3_context* context);
// True if one of the arguments is NULL; the result is NULL then.
bool AnyNull(sqlite3_context* context, int count, sqlite3_value** values);
bool IsInteger(sqlite3_value* value);

inline constexpr char kDivideByZero[] = "Divide by zero error encountered.";

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_FUNCTIONS_H_
