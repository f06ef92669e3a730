#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

#include "adapters/sqlite/exact.h"
#include "adapters/sqlite/functions.h"

// Arithmetic that SQLite does otherwise.
namespace vorek::sqlite {
namespace {

// The exact numbers among a call's arguments. Fails for one that isn't any.
template <std::size_t kCount>
bool TakeWides(sqlite3_context* context, sqlite3_value** values, std::array<Wide, kCount>& wides) {
  for (std::size_t i = 0; i < kCount; ++i) {
    const std::optional<Wide> wide = WideOf(values[i]);
    if (!wide) {
      FailOverflow(context, "numeric");
      return false;
    }
    wides[i] = *wide;
  }
  return true;
}

void ResultOrOverflow(sqlite3_context* context, const std::optional<Wide>& value) {
  if (!value) return FailOverflow(context, "numeric");
  ResultWide(context, *value);
}

void ResultOfDigits(sqlite3_context* context, Wide value) {
  if (!HasDigits(value, kMostDigits)) return FailOverflow(context, "numeric");
  ResultWide(context, value);
}

void Plus(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 2> ab{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, ab)) return;
  ResultOfDigits(context, ab[0] + ab[1]);
}

void Minus(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 2> ab{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, ab)) return;
  ResultOfDigits(context, ab[0] - ab[1]);
}

void Negate(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  ResultOfDigits(context, -a[0]);
}

void Absolute(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  ResultOfDigits(context, a[0] < 0 ? -a[0] : a[0]);
}

void Sign(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  sqlite3_result_int(context, a[0] < 0 ? -1 : a[0] > 0 ? 1 : 0);
}

// vk_quotient(a, b, step): a * 10^step / b, cut off behind the last unit.
void Quotient(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 2> ab{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, ab)) return;
  if (ab[1] == 0) return FailDivision(context);
  ResultOrOverflow(context, Scale(ab[0], 1, sqlite3_value_int(values[2]), ab[1], false));
}

// vk_times(a, b, down): a * b / 10^down, rounded.
void Times(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 2> ab{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, ab)) return;
  ResultOrOverflow(context, Scale(ab[0], ab[1], 0, WidePower(sqlite3_value_int(values[2])), true));
}

// vk_rescale(a, step): more decimal places, or fewer, rounded.
void Rescale(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  const int step = sqlite3_value_int(values[1]);
  ResultOrOverflow(context, step >= 0 ? Scale(a[0], 1, step, 1, true)
                                      : Scale(a[0], 1, 0, WidePower(-step), true));
}

// vk_order(a): what a number that may be a big one is ordered by; vk_of_order: the way back.
void Order(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  const std::string bytes = OrderedBytes(a[0]);
  sqlite3_result_blob(context, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

void OfOrder(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  ResultWide(context, a[0]);
}

// vk_to_real(a, scale)
void ToReal(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  sqlite3_result_double(context,
                        std::strtod(WideText(a[0], sqlite3_value_int(values[1])).c_str(), nullptr));
}

void Remainder(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 2> ab{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, ab)) return;
  if (ab[1] == 0) return FailDivision(context);
  ResultWide(context, ab[0] % ab[1]);
}

// A whole number's or money's range: vk_in_int(x) and its like give x, or the error.
struct Range {
  const char* function;
  const char* type;
  std::int64_t least;
  std::int64_t most;
};
constexpr std::array<Range, 6> kRanges = {{
    {"vk_in_tinyint", "tinyint", 0, 255},
    {"vk_in_smallint", "smallint", INT16_MIN, INT16_MAX},
    {"vk_in_int", "int", INT32_MIN, INT32_MAX},
    {"vk_in_bigint", "bigint", INT64_MIN, INT64_MAX},
    {"vk_in_smallmoney", "smallmoney", INT32_MIN, INT32_MAX},
    {"vk_in_money", "money", INT64_MIN, INT64_MAX},
}};

void InRange(sqlite3_context* context, int, sqlite3_value** values) {
  const int type = sqlite3_value_type(values[0]);
  if (type == SQLITE_NULL) return sqlite3_result_null(context);
  const auto* range = static_cast<const Range*>(DataOf(context));
  // SQLite goes on with real numbers where integers leave 63 bits.
  const std::int64_t value = sqlite3_value_int64(values[0]);
  if (type != SQLITE_INTEGER || value < range->least || value > range->most) {
    return FailOverflow(context, range->type);
  }
  sqlite3_result_int64(context, value);
}

void Divide(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const double divisor = sqlite3_value_double(values[1]);
  if (divisor == 0.0) return FailDivision(context);
  sqlite3_result_double(context, sqlite3_value_double(values[0]) / divisor);
}

void Xor(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  sqlite3_result_int64(context, sqlite3_value_int64(values[0]) ^ sqlite3_value_int64(values[1]));
}

// vk_integral(a, scale, up): FLOOR and CEILING of an exact number, as a whole one.
void Integral(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  const Wide unit = WidePower(sqlite3_value_int(values[1]));
  const bool up = sqlite3_value_int(values[2]) != 0;
  Wide whole = a[0] / unit;
  if (a[0] % unit != 0 && up == (a[0] > 0)) whole += up ? 1 : -1;
  ResultWide(context, whole);
}

// vk_round_exact(a, scale, places, cut): ROUND of an exact number, which keeps its scale.
void RoundExact(sqlite3_context* context, int count, sqlite3_value** values) {
  std::array<Wide, 1> a{};
  if (AnyNull(context, count, values) || !TakeWides(context, values, a)) return;
  const std::int64_t drop = sqlite3_value_int64(values[1]) - sqlite3_value_int64(values[2]);
  if (drop <= 0) return sqlite3_result_value(context, values[0]);
  if (drop > kMostDigits) return sqlite3_result_int64(context, 0);
  const Wide unit = WidePower(static_cast<int>(drop));
  const bool cut = sqlite3_value_int(values[3]) != 0;
  const std::optional<Wide> count_of_units = Scale(a[0], 1, 0, unit, !cut);
  ResultOrOverflow(context, Scale(count_of_units.value_or(0), unit, 0, 1, false));
}

void Round(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const double value = sqlite3_value_double(values[0]);
  const double unit = std::pow(10.0, static_cast<double>(sqlite3_value_int64(values[1])));
  const double scaled = value * unit;
  if (!std::isfinite(scaled) || unit == 0.0) {
    return sqlite3_result_double(context, unit == 0.0 ? 0.0 : value);
  }
  const bool cut = sqlite3_value_int(values[2]) != 0;
  sqlite3_result_double(context, (cut ? std::trunc(scaled) : std::round(scaled)) / unit);
}

void FiniteResult(sqlite3_context* context, double value) {
  if (std::isnan(value)) return Fail(context, "An invalid floating point operation occurred.");
  if (std::isinf(value)) return FailOverflow(context, "float");
  sqlite3_result_double(context, value);
}

void Power(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  FiniteResult(context, std::pow(sqlite3_value_double(values[0]), sqlite3_value_double(values[1])));
}

void Sqrt(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  FiniteResult(context, std::sqrt(sqlite3_value_double(values[0])));
}

void LogOf(sqlite3_context* context, sqlite3_value* value, double (*log)(double)) {
  const double x = sqlite3_value_double(value);
  if (x <= 0.0) return Fail(context, "An invalid floating point operation occurred.");
  sqlite3_result_double(context, log(x));
}

void Log(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) LogOf(context, values[0], std::log);
}

void Log10(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) LogOf(context, values[0], std::log10);
}

void Real(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const double value = sqlite3_value_double(values[0]);
  if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) {
    return FailOverflow(context, "real");
  }
  sqlite3_result_double(context, static_cast<double>(static_cast<float>(value)));
}

}  // namespace

void RegisterNumberFunctions(const Registry& registry) {
  Register(registry, "vk_plus", 2, Plus);
  Register(registry, "vk_minus", 2, Minus);
  Register(registry, "vk_negate", 1, Negate);
  Register(registry, "vk_abs", 1, Absolute);
  Register(registry, "vk_sign", 1, Sign);
  Register(registry, "vk_quotient", 3, Quotient);
  Register(registry, "vk_times", 3, Times);
  Register(registry, "vk_rescale", 2, Rescale);
  Register(registry, "vk_order", 1, Order);
  Register(registry, "vk_of_order", 1, OfOrder);
  Register(registry, "vk_to_real", 2, ToReal);
  Register(registry, "vk_remainder", 2, Remainder);
  Register(registry, "vk_divide", 2, Divide);
  Register(registry, "vk_xor", 2, Xor);
  Register(registry, "vk_integral", 3, Integral);
  Register(registry, "vk_round_exact", 4, RoundExact);
  Register(registry, "vk_round", 3, Round);
  Register(registry, "vk_power", 2, Power);
  Register(registry, "vk_sqrt", 1, Sqrt);
  Register(registry, "vk_log", 1, Log);
  Register(registry, "vk_log10", 1, Log10);
  Register(registry, "vk_real", 1, Real, "vk_try_real");
  for (const Range& range : kRanges) {
    Register(registry, range.function, 1, InRange, nullptr, &range);
  }
}

}  // namespace vorek::sqlite
