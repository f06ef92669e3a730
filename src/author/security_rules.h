#ifndef VOREK_AUTHOR_SECURITY_RULES_H_
#define VOREK_AUTHOR_SECURITY_RULES_H_

#include <string_view>
#include <vector>

#include "author/query_lookup.h"

namespace vorek {

// Looks for what the text work of the security clause (engine/rights.h) doesn't see: it searches
// for " FROM ", " Where " and " Order By " between blanks, wherever they stand, and puts its
// condition in front of the order or at the end. So a query leaks, or is refused.
std::vector<QueryFault> FindSecurityFaults(std::string_view query);

}  // namespace vorek

#endif  // VOREK_AUTHOR_SECURITY_RULES_H_
