#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "adapters/sqlite/exact.h"
#include "adapters/sqlite/functions.h"

// STDEV, VAR and their like, and the guard of subqueries that stand for one value.
namespace vorek::sqlite {
namespace {

// Kept as the mean and the squares of the distances from it, so that big numbers that lie close
// together lose nothing.
struct Spread {
  std::int64_t count;
  double mean;
  double squares;
};

void AddTo(sqlite3_context* context, sqlite3_value** values, bool adds) {
  if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
  auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
  if (spread == nullptr) return sqlite3_result_error_nomem(context);
  const double distance = sqlite3_value_double(values[0]) - spread->mean;
  spread->count += adds ? 1 : -1;
  if (spread->count == 0) {
    *spread = {};
    return;
  }
  const double step = distance / static_cast<double>(spread->count);
  spread->mean += adds ? step : -step;
  const double product = distance * (sqlite3_value_double(values[0]) - spread->mean);
  spread->squares += adds ? product : -product;
}

void Add(sqlite3_context* context, int, sqlite3_value** values) { AddTo(context, values, true); }
void Remove(sqlite3_context* context, int, sqlite3_value** values) {
  AddTo(context, values, false);
}

template <bool kSample, bool kRoot>
void Result(sqlite3_context* context) {
  const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
  const std::int64_t divisor = spread == nullptr ? 0 : spread->count - (kSample ? 1 : 0);
  if (divisor <= 0) return sqlite3_result_null(context);
  const double variance = std::max(0.0, spread->squares) / static_cast<double>(divisor);
  sqlite3_result_double(context, kRoot ? std::sqrt(variance) : variance);
}

template <bool kSample, bool kRoot>
void RegisterSpread(sqlite3* db, const char* name) {
  sqlite3_create_window_function(db, name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                 nullptr, Add, Result<kSample, kRoot>, Result<kSample, kRoot>,
                                 Remove, nullptr);
}

// vk_sum(a), vk_sum(a, b): the exact sum of exact numbers, or of the products of two.
struct Sum {
  std::int64_t count;
  // Of a Wide: SQLite aligns memory to eight bytes only.
  std::uint64_t low;
  std::uint64_t high;
  bool overflow;

  Wide Total() const { return static_cast<Wide>(Unsigned{high} << 64U | low); }
  void SetTotal(Wide value) {
    low = static_cast<std::uint64_t>(static_cast<Unsigned>(value));
    high = static_cast<std::uint64_t>(static_cast<Unsigned>(value) >> 64U);
  }
};

std::optional<Wide> Summand(int count, sqlite3_value** values) {
  const std::optional<Wide> first = WideOf(values[0]);
  if (count == 1 || !first) return first;
  const std::optional<Wide> second = WideOf(values[1]);
  if (!second) return second;
  // Two integers of SQLite make a product that has room.
  if (IsInteger(values[0]) && IsInteger(values[1])) return *first * *second;
  return Scale(*first, *second, 0, 1, false);
}

void AddToSum(sqlite3_context* context, int count, sqlite3_value** values, bool adds) {
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(values[i]) == SQLITE_NULL) return;
  }
  auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
  if (sum == nullptr) return sqlite3_result_error_nomem(context);
  const std::optional<Wide> wide = Summand(count, values);
  sum->count += adds ? 1 : -1;
  Wide total = 0;
  const bool over = adds ? __builtin_add_overflow(sum->Total(), wide.value_or(0), &total)
                         : __builtin_sub_overflow(sum->Total(), wide.value_or(0), &total);
  sum->SetTotal(total);
  sum->overflow = sum->overflow || over || !wide;
}

void AddNumber(sqlite3_context* context, int count, sqlite3_value** values) {
  AddToSum(context, count, values, true);
}
void RemoveNumber(sqlite3_context* context, int count, sqlite3_value** values) {
  AddToSum(context, count, values, false);
}
void GiveSum(sqlite3_context* context) {
  const auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
  if (sum == nullptr || sum->count == 0) return sqlite3_result_null(context);
  if (sum->overflow || !HasDigits(sum->Total(), kMostDigits)) {
    return sqlite3_result_error(context, OverflowMessage("numeric").c_str(), -1);
  }
  ResultWide(context, sum->Total());
}

struct One {
  sqlite3_value* value;
  bool seen;
};

void TakeOne(sqlite3_context* context, int, sqlite3_value** values) {
  auto* one = static_cast<One*>(sqlite3_aggregate_context(context, sizeof(One)));
  if (one == nullptr) return sqlite3_result_error_nomem(context);
  if (one->seen) {
    return sqlite3_result_error(context,
                                "Subquery returned more than 1 value. This is not permitted when "
                                "the subquery is used as an expression.",
                                -1);
  }
  one->seen = true;
  one->value = sqlite3_value_dup(values[0]);
}

void GiveOne(sqlite3_context* context) {
  auto* one = static_cast<One*>(sqlite3_aggregate_context(context, 0));
  if (one == nullptr || one->value == nullptr) return sqlite3_result_null(context);
  sqlite3_result_value(context, one->value);
  sqlite3_value_free(one->value);
  one->value = nullptr;
}

}  // namespace

void RegisterAggregates(sqlite3* db) {
  RegisterSpread<true, true>(db, "vk_stdev");
  RegisterSpread<false, true>(db, "vk_stdevp");
  RegisterSpread<true, false>(db, "vk_var");
  RegisterSpread<false, false>(db, "vk_varp");
  for (const int arguments : {1, 2}) {
    sqlite3_create_window_function(db, "vk_sum", arguments,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                   AddNumber, GiveSum, GiveSum, RemoveNumber, nullptr);
  }
  sqlite3_create_function_v2(db, "vk_one", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                             nullptr, nullptr, TakeOne, GiveOne, nullptr);
}

}  // namespace vorek::sqlite
