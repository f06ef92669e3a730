#ifndef VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_
#define VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_

#include <fstream>
#include <optional>

namespace vorek::odbc {

// Tells other threads whether the one that made it waits for something outside of itself, such as a
// server's answer.
class ThreadWait {
 public:
  ThreadWait();

  // Nothing where the system doesn't tell. From one thread at a time.
  // Source: proc(5), the state in /proc/[pid]/task/[tid]/stat.
  std::optional<bool> Waits();

 private:
  std::ifstream status_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_
