#ifndef VOREK_APPS_VOREK_LIMIT_OPTIONS_H_
#define VOREK_APPS_VOREK_LIMIT_OPTIONS_H_

#include <CLI/CLI.hpp>
#include <cstddef>

#include "vorek/database.h"

namespace vorek {

// How much a command's query may bring into memory, as its options say it.
struct LimitOptions {
  std::size_t rows = ResultLimits().rows;
  std::size_t megabytes = ResultLimits().bytes >> 20U;

  ResultLimits Limits() const { return {rows, megabytes << 20U}; }
};

inline void AddLimitOptions(CLI::App& command, LimitOptions& options) {
  command.add_option("--max-rows", options.rows, "rows that a query may bring; 0 for no limit");
  command.add_option("--max-memory", options.megabytes,
                     "megabytes that they may take; 0 for no limit");
}

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_LIMIT_OPTIONS_H_
