#ifndef VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_
#define VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_

#include <fstream>
#include <optional>
#include <string>

namespace vorek::odbc {

// Tells another thread whether the one that made it waits for something outside of itself, such as
// a server's answer.
class ThreadWait {
 public:
  ThreadWait();

  // True if it waits, and has done so without a break since the last look: the first one is always
  // false. Nothing where the system doesn't tell. From one thread at a time.
  // Source: proc(5), State and voluntary_ctxt_switches in /proc/[pid]/task/[tid]/status.
  std::optional<bool> WaitsSinceLastLook();

 private:
  std::ifstream status_;
  std::string switches_;  // how often it had begun to wait
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_THREAD_WAIT_H_
