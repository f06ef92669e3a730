#include "eval/held_number.h"

#include "eval/number_text.h"

namespace vorek {

double HoldDigitsByText(double x) { return TextNumber(NumberText(x)) + 0.0; }

}  // namespace vorek
