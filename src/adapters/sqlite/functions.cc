#include "adapters/sqlite/functions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

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

// The places of the letters of one and two bytes in the order, without regard to case.
constexpr std::size_t kShortLetters = 0x800;
using Weights = std::array<char32_t, kShortLetters>;
const Weights kShortWeights = [] {
  Weights weights{};
  for (char32_t c = 0; c < kShortLetters; ++c) weights[c] = text::LetterOrder(text::ToLower(c));
  return weights;
}();

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The place of the letter at byte `at`, which moves behind it.
char32_t NextWeight(std::string_view s, std::size_t& at) {
  const auto first = static_cast<unsigned char>(s[at]);
  if (first < 0x80) return kShortWeights[static_cast<unsigned char>(s[at++])];
  const bool two_bytes =
      first >= 0xC2 && first < 0xE0 && at + 1 < s.size() && IsContinuation(s[at + 1]);
  if (!two_bytes) return text::LetterOrder(text::ToLower(text::DecodeAt(s, at)));
  const auto second = static_cast<unsigned char>(s[at + 1]);
  at += 2;
  return kShortWeights[(first & 0x1FU) << 6U | (second & 0x3FU)];
}

// The bytes that both begin with, up to the beginning of a letter.
std::size_t CommonHead(std::string_view a, std::string_view b) {
  const std::size_t size = std::min(a.size(), b.size());
  std::size_t at = 0;
  std::uint64_t x = 0;
  std::uint64_t y = 0;
  for (; at + sizeof x <= size; at += sizeof x) {
    std::memcpy(&x, a.data() + at, sizeof x);
    std::memcpy(&y, b.data() + at, sizeof y);
    if (x != y) break;
  }
  while (at < size && a[at] == b[at]) ++at;
  const auto inside = [&at](std::string_view s) { return at < s.size() && IsContinuation(s[at]); };
  while (at > 0 && (inside(a) || inside(b))) --at;
  return at;
}

int Collate(void*, int a_size, const void* a, int b_size, const void* b) {
  return CompareTexts({static_cast<const char*>(a), static_cast<std::size_t>(a_size)},
                      {static_cast<const char*>(b), static_cast<std::size_t>(b_size)});
}

}  // namespace

int CompareTexts(std::string_view a, std::string_view b) {
  a = WithoutTrailingBlanks(a);
  b = WithoutTrailingBlanks(b);
  if (a == b) return 0;
  std::size_t i = CommonHead(a, b);
  std::size_t j = i;
  while (i < a.size() && j < b.size()) {
    const char32_t x = NextWeight(a, i);
    const char32_t y = NextWeight(b, j);
    if (x != y) return x < y ? -1 : 1;
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
