#ifndef VOREK_PLATFORM_RESULT_LIMIT_H_
#define VOREK_PLATFORM_RESULT_LIMIT_H_

#include "vorek/database.h"

namespace vorek {

// Throws Error(kOutOfMemory) for a result that is beyond the limits. Asked by providers while they
// read, every few thousand rows.
void RefuseBeyond(const ResultLimits& limits, const ResultSet& result);
// The same for rows that are held in another way.
void RefuseBeyond(const ResultLimits& limits, std::size_t rows);

}  // namespace vorek

#endif  // VOREK_PLATFORM_RESULT_LIMIT_H_
