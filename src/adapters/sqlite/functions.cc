#include "adapters/sqlite/functions.h"

#include <algorithm>

#include "text/collation.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

// What a function knows of how it was registered.
constexpr int kOnlyTries = 1;
constexpr unsigned kBloomFilter = 0x00080000;  // SQLite's number of the optimization

std::string_view WithoutTrailingBlanks(std::string_view s) {
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

int Collate(void*, int a_size, const void* a, int b_size, const void* b) {
  return CompareTexts({static_cast<const char*>(a), static_cast<std::size_t>(a_size)},
                      {static_cast<const char*>(b), static_cast<std::size_t>(b_size)});
}

}  // namespace

int CompareTexts(std::string_view a, std::string_view b) {
  a = WithoutTrailingBlanks(a);
  b = WithoutTrailingBlanks(b);
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const auto x = static_cast<unsigned char>(a[i]);
    const auto y = static_cast<unsigned char>(b[j]);
    if (x < 0x80 && y < 0x80) {
      ++i;
      ++j;
      if (x == y) continue;
      const int difference = static_cast<unsigned char>(LowerAscii(static_cast<char>(x))) -
                             static_cast<unsigned char>(LowerAscii(static_cast<char>(y)));
      if (difference != 0) return difference;
      continue;
    }
    const char32_t c = text::ToLower(text::DecodeAt(a, i));
    const char32_t d = text::ToLower(text::DecodeAt(b, j));
    if (c != d) return text::LetterOrder(c) < text::LetterOrder(d) ? -1 : 1;
  }
  if (i < a.size()) return 1;
  return j < b.size() ? -1 : 0;
}

void RegisterFunctions(sqlite3* db) {
  sqlite3_create_collation_v2(db, "VOREK", SQLITE_UTF8, nullptr, Collate, nullptr);
  // A Bloom filter of a join goes by the bytes of a key, and would lose equal texts that are
  // written otherwise.
  sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, kBloomFilter);
  RegisterTextFunctions(db);
  RegisterNumberFunctions(db);
  RegisterConversions(db);
  RegisterDateFunctions(db);
  RegisterAggregates(db);
  RegisterLike(db);
}

void Register(sqlite3* db, const char* name, int arguments, Function function,
              const char* try_name) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  sqlite3_create_function_v2(db, name, arguments, kFlags, nullptr, function, nullptr, nullptr,
                             nullptr);
  if (try_name == nullptr) return;
  sqlite3_create_function_v2(db, try_name, arguments, kFlags, const_cast<int*>(&kOnlyTries),
                             function, nullptr, nullptr, nullptr);
}

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void ResultText(sqlite3_context* context, std::string_view text) {
  sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Fail(sqlite3_context* context, const std::string& message) {
  if (sqlite3_user_data(context) == &kOnlyTries) {
    sqlite3_result_null(context);
  } else {
    sqlite3_result_error(context, message.c_str(), -1);
  }
}

void FailOverflow(sqlite3_context* context, std::string_view type) {
  Fail(context,
       "Arithmetic overflow error converting expression to data type " + std::string(type) + ".");
}

void FailDivision(sqlite3_context* context) { sqlite3_result_error(context, kDivideByZero, -1); }

bool AnyNull(sqlite3_context* context, int count, sqlite3_value** values) {
  const bool any = std::any_of(values, values + count, [](sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
  });
  if (any) sqlite3_result_null(context);
  return any;
}

bool IsInteger(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_INTEGER; }

}  // namespace vorek::sqlite
