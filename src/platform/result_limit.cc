#include "platform/result_limit.h"

namespace vorek {

void RefuseBeyond(const ResultLimits& limits, std::size_t rows) {
  if (limits.rows == 0 || rows <= limits.rows) return;
  throw Error(ErrorNumber::kOutOfMemory,
              "The result has more than " + std::to_string(limits.rows) + " rows.");
}

void RefuseBeyond(const ResultLimits& limits, const ResultSet& result) {
  RefuseBeyond(limits, result.rows);
  if (limits.bytes == 0) return;
  std::size_t bytes = 0;
  for (const ResultColumn& column : result.columns) bytes += column.Memory();
  if (bytes <= limits.bytes) return;
  throw Error(ErrorNumber::kOutOfMemory, "The result takes more than " +
                                             std::to_string(limits.bytes >> 20U) +
                                             " megabytes of memory.");
}

}  // namespace vorek
