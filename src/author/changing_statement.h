#ifndef VOREK_AUTHOR_CHANGING_STATEMENT_H_
#define VOREK_AUTHOR_CHANGING_STATEMENT_H_

#include <cstddef>
#include <optional>
#include <vector>

#include "author/query_tokens.h"

namespace vorek {

// The number, from 0, of the first token that begins a statement which changes what the database
// holds: its rows, or its tables. Work tables and variables ("#t", "@t") are the run's own, also
// under an alias.
std::optional<std::size_t> FindChange(const std::vector<QueryToken>& tokens);

}  // namespace vorek

#endif  // VOREK_AUTHOR_CHANGING_STATEMENT_H_
