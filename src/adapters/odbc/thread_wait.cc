#include "adapters/odbc/thread_wait.h"

#include <string_view>

namespace vorek::odbc {

// The file stays that of the thread that opened it, whoever reads it.
ThreadWait::ThreadWait() : status_("/proc/thread-self/status") {}

std::optional<bool> ThreadWait::WaitsSinceLastLook() {
  constexpr std::string_view kState = "State:\t";
  constexpr std::string_view kSwitches = "voluntary_ctxt_switches:\t";
  status_.clear();
  status_.seekg(0);
  bool waits = false;
  for (std::string line; std::getline(status_, line);) {
    if (line.starts_with(kState)) waits = line[kState.size()] == 'S';
    if (!line.starts_with(kSwitches)) continue;
    const bool same = line == switches_;
    switches_ = std::move(line);
    return waits && same;
  }
  return std::nullopt;
}

}  // namespace vorek::odbc
