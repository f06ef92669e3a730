#ifndef VOREK_AUTHOR_QUERY_LOOKUP_H_
#define VOREK_AUTHOR_QUERY_LOOKUP_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "author/finding.h"
#include "state/process.h"
#include "vorek/error.h"
#include "vorek/result_set.h"

namespace vorek {

// Why a database refuses a text.
struct QueryFault {
  Rule rule;
  std::optional<std::size_t> at;    // the byte of the text, where it can be told
  std::vector<std::string> values;  // of the rule
  std::string message = {};         // the database's own words, without the place
};

// What a database tells of a text without running it.
struct QueryLookup {
  ResultSetPtr columns;  // without rows; null where they can't be told
  std::optional<QueryFault> fault;
};
// Throws Error for a connection that fails.
QueryLookup LookUp(Process& process, const std::string& text);

// A refusal of the text in a database's own words.
QueryFault FaultOf(const Error& error, const std::string& text);

}  // namespace vorek

#endif  // VOREK_AUTHOR_QUERY_LOOKUP_H_
