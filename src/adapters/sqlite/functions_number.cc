#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/type.h"

// Arithmetic that SQLite does otherwise. Exact numbers come as integers of their units; one beyond
// 63 bits comes and goes as a real number of the same units.
namespace vorek::sqlite {
namespace {

// A GCC and Clang type; nothing else here is wider than 64 bits.
__extension__ typedef __int128 Wide;

Wide WidePower(int exponent) {
  Wide value = 1;
  for (int i = 0; i < exponent; ++i) value *= 10;
  return value;
}

void ResultWide(sqlite3_context* context, Wide value) {
  constexpr Wide kMost = std::numeric_limits<std::int64_t>::max();
  if (value <= kMost && value >= -kMost) {
    sqlite3_result_int64(context, static_cast<std::int64_t>(value));
  } else {
    sqlite3_result_double(context, static_cast<double>(value));
  }
}

// value / divisor with half away from zero.
Wide RoundedQuotient(Wide value, Wide divisor) {
  const Wide half = divisor / 2;
  return value >= 0 ? (value + half) / divisor : (value - half) / divisor;
}

// vk_quotient(a, b, step): a * 10^step / b, cut off behind the last unit.
void Quotient(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int step = sqlite3_value_int(values[2]);
  if (sqlite3_value_double(values[1]) == 0.0) return FailDivision(context);
  const bool exact = IsInteger(values[0]) && IsInteger(values[1]) && step <= 18 && step >= -18;
  if (!exact) {
    const double result =
        sqlite3_value_double(values[0]) * std::pow(10.0, step) / sqlite3_value_double(values[1]);
    const double whole = std::trunc(result);
    if (std::abs(whole) < 9e15) {
      return sqlite3_result_int64(context, static_cast<std::int64_t>(whole));
    }
    return sqlite3_result_double(context, result);
  }
  Wide dividend = sqlite3_value_int64(values[0]);
  Wide divisor = sqlite3_value_int64(values[1]);
  if (step >= 0) {
    dividend *= WidePower(step);
  } else {
    divisor *= WidePower(-step);
  }
  ResultWide(context, dividend / divisor);
}

// vk_times(a, b, down): a * b / 10^down, rounded.
void Times(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int down = sqlite3_value_int(values[2]);
  if (!IsInteger(values[0]) || !IsInteger(values[1])) {
    return sqlite3_result_double(
        context,
        sqlite3_value_double(values[0]) * sqlite3_value_double(values[1]) / std::pow(10.0, down));
  }
  const Wide product = Wide{sqlite3_value_int64(values[0])} * sqlite3_value_int64(values[1]);
  ResultWide(context, RoundedQuotient(product, WidePower(down)));
}

// vk_down(a, places): fewer decimal places, rounded.
void Down(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int places = sqlite3_value_int(values[1]);
  if (!IsInteger(values[0])) {
    return sqlite3_result_double(context, sqlite3_value_double(values[0]) / std::pow(10.0, places));
  }
  ResultWide(context, RoundedQuotient(sqlite3_value_int64(values[0]), WidePower(places)));
}

void Remainder(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  if (sqlite3_value_double(values[1]) == 0.0) return FailDivision(context);
  if (!IsInteger(values[0]) || !IsInteger(values[1])) {
    return sqlite3_result_double(
        context, std::fmod(sqlite3_value_double(values[0]), sqlite3_value_double(values[1])));
  }
  const std::int64_t divisor = sqlite3_value_int64(values[1]);
  sqlite3_result_int64(context, divisor == -1 ? 0 : sqlite3_value_int64(values[0]) % divisor);
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
  if (AnyNull(context, count, values)) return;
  const Wide unit = WidePower(sqlite3_value_int(values[1]));
  const bool up = sqlite3_value_int(values[2]) != 0;
  const Wide value = sqlite3_value_int64(values[0]);
  Wide whole = value / unit;
  if (value % unit != 0 && up == (value > 0)) whole += up ? 1 : -1;
  ResultWide(context, whole);
}

// vk_round_exact(a, scale, places, cut): ROUND of an exact number, which keeps its scale.
void RoundExact(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::int64_t places = sqlite3_value_int64(values[2]);
  const std::int64_t drop = sqlite3_value_int64(values[1]) - places;
  if (drop <= 0) return sqlite3_result_value(context, values[0]);
  if (drop > 18) return sqlite3_result_int64(context, 0);
  const Wide unit = WidePower(static_cast<int>(drop));
  const Wide value = sqlite3_value_int64(values[0]);
  const bool cut = sqlite3_value_int(values[3]) != 0;
  ResultWide(context, (cut ? value / unit : RoundedQuotient(value, unit)) * unit);
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

void RegisterNumberFunctions(sqlite3* db) {
  Register(db, "vk_quotient", 3, Quotient);
  Register(db, "vk_times", 3, Times);
  Register(db, "vk_down", 2, Down);
  Register(db, "vk_remainder", 2, Remainder);
  Register(db, "vk_divide", 2, Divide);
  Register(db, "vk_xor", 2, Xor);
  Register(db, "vk_integral", 3, Integral);
  Register(db, "vk_round_exact", 4, RoundExact);
  Register(db, "vk_round", 3, Round);
  Register(db, "vk_power", 2, Power);
  Register(db, "vk_sqrt", 1, Sqrt);
  Register(db, "vk_log", 1, Log);
  Register(db, "vk_log10", 1, Log10);
  Register(db, "vk_real", 1, Real);
}

}  // namespace vorek::sqlite
