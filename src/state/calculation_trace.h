#ifndef VOREK_STATE_CALCULATION_TRACE_H_
#define VOREK_STATE_CALCULATION_TRACE_H_

#include <cstdint>
#include <optional>
#include <string>

namespace vorek {

// How one cell of a calculated column came about: whoever wants to know names the cell, and the
// passes that fill it tell; the last one counts.
struct CalculationTrace {
  std::int32_t row = 0;  // of the grid
  std::int32_t column = 0;

  bool told = false;  // the cell is a calculated one
  std::string formula = {};
  std::string with_numbers = {};  // the formula with its references put in
  std::optional<double> value = {};
  int code = 0;  // CErr
  std::string code_text = {};
  std::string cell = {};  // what was written
};

}  // namespace vorek

#endif  // VOREK_STATE_CALCULATION_TRACE_H_
