#include "adapters/sqlite/functions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include "text/collation.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

// What a function knows of how it was registered.
struct Registered {
  Function function;
  std::shared_ptr<WorkMeter> meter;
  bool twin;
  const void* data;
};

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

std::size_t BytesOf(int count, sqlite3_value** values) {
  std::size_t bytes = 0;
  for (int i = 0; i < count; ++i) {
    const int type = sqlite3_value_type(values[i]);
    const bool has_bytes = type == SQLITE_TEXT || type == SQLITE_BLOB;
    if (has_bytes) bytes += static_cast<std::size_t>(sqlite3_value_bytes(values[i]));
  }
  return bytes;
}

const Registered& RegisteredOf(sqlite3_context* context) {
  return *static_cast<const Registered*>(sqlite3_user_data(context));
}

void Enter(sqlite3_context* context, int count, sqlite3_value** values) {
  constexpr std::size_t kCall = 16;  // bytes that a call is counted as
  if (MustStop(context, kCall + BytesOf(count, values))) return;
  try {
    RegisteredOf(context).function(context, count, values);
  } catch (const std::bad_alloc&) {  // SQLite's own frames can't be unwound
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

void RegisterOne(const Registry& registry, const char* name, int arguments, int flags,
                 Registered registered) {
  auto owned = std::make_unique<Registered>(std::move(registered));
  // SQLite calls the last one also when it takes the function by no means.
  sqlite3_create_function_v2(registry.db, name, arguments, SQLITE_UTF8 | SQLITE_INNOCUOUS | flags,
                             owned.release(), Enter, nullptr, nullptr, [](void* p) {
                               std::unique_ptr<Registered>(static_cast<Registered*>(p)).reset();
                             });
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

void RegisterFunctions(sqlite3* db, std::function<bool()> must_stop) {
  sqlite3_create_collation_v2(db, "VOREK", SQLITE_UTF8, nullptr, Collate, nullptr);
  // A Bloom filter of a join goes by the bytes of a key, and would lose equal texts that are
  // written otherwise.
  sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, kBloomFilter);
  const Registry registry{db, std::make_shared<WorkMeter>(std::move(must_stop))};
  RegisterTextFunctions(registry);
  RegisterNumberFunctions(registry);
  RegisterConversions(registry);
  RegisterDateFunctions(registry);
  RegisterAggregates(db);
  RegisterLike(registry);
}

void Register(const Registry& registry, const char* name, int arguments, Function function,
              const char* try_name, const void* data) {
  const auto add = [&](const char* as, bool twin) {
    RegisterOne(registry, as, arguments, SQLITE_DETERMINISTIC,
                {function, registry.meter, twin, data});
  };
  add(name, false);
  if (try_name != nullptr) add(try_name, true);
}

void RegisterVolatile(const Registry& registry, const char* name, int arguments,
                      Function function) {
  RegisterOne(registry, name, arguments, 0, {function, registry.meter, false, nullptr});
}

bool IsTwin(sqlite3_context* context) { return RegisteredOf(context).twin; }

const void* DataOf(sqlite3_context* context) { return RegisteredOf(context).data; }

bool MustStop(sqlite3_context* context, std::size_t work) {
  if (!RegisteredOf(context).meter->Spend(work)) return false;
  sqlite3_result_error_code(context, SQLITE_INTERRUPT);
  return true;
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
  if (IsTwin(context)) {
    sqlite3_result_null(context);
  } else {
    sqlite3_result_error(context, message.c_str(), -1);
  }
}

void FailOverflow(sqlite3_context* context, std::string_view type) {
  Fail(context, OverflowMessage(type));
}

std::string OverflowMessage(std::string_view type) {
  return "Arithmetic overflow error converting expression to data type " + std::string(type) + ".";
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
