#include "adapters/odbc/thread_wait.h"

#include <string>

namespace vorek::odbc {

// The file stays that of the thread that opened it, whoever reads it.
ThreadWait::ThreadWait() : status_("/proc/thread-self/stat") {}

// The program's name in brackets comes before the state, and may hold any letter.
std::optional<bool> ThreadWait::Waits() {
  status_.clear();
  status_.seekg(0);
  std::string line;
  if (!std::getline(status_, line)) return std::nullopt;
  const std::size_t name_end = line.rfind(')');
  if (name_end == std::string::npos || name_end + 2 >= line.size()) return std::nullopt;
  return line[name_end + 2] == 'S';
}

}  // namespace vorek::odbc
