// A filter of a recordset. Behind "!" stands a filter as it is: it's refused by an Error or means
// the same in brackets. Other bytes make rows and a filter with a plain reading of it.
#include <vector>

#include "../tests/catalog/filter_case.h"
#include "catalog/filter.h"
#include "require.h"
#include "vorek/error.h"

namespace {

using namespace vorek;

void CheckText(std::string_view text) {
  static const ResultSetPtr rows = FilterCase({5, 1, 2, 1, 3, 4, 1, 7, 2, 2, 9, 5, 6, 7}).Result();
  try {
    const RecordFilter filter(text, *rows);
    const RecordFilter in_brackets("(" + std::string(text) + ")", *rows);
    for (std::size_t row = 0; row < rows->rows; ++row) {
      Require(filter.Matches(row) == in_brackets.Matches(row), "brackets change the filter");
    }
  } catch (const Error&) {
    return;
  }
}

void CheckCase(const FilterCase& made) {
  const ResultSetPtr rows = made.Result();
  const RecordFilter filter(made.Text(), *rows);
  for (std::size_t row = 0; row < rows->rows; ++row) {
    Require(filter.Matches(row) == made.Matches()[row],
            "row " + std::to_string(row) + " differs: " + made.Text());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0 && data[0] == '!') {
    CheckText(TextOf(data + 1, size - 1));
  } else {
    CheckCase(FilterCase(std::vector<std::uint8_t>(data, data + size)));
  }
  return 0;
}
