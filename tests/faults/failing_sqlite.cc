#include "faults/failing_sqlite.h"

#include <sqlite3.h>

#include <atomic>
#include <stdexcept>

namespace vorek::failing_sqlite {
namespace {

sqlite3_mem_methods own;
std::atomic<bool> armed{false};
std::atomic<bool> fired{false};
std::atomic<std::size_t> count{0};
std::atomic<std::size_t> fails_at{0};

bool Fails() {
  if (!armed || ++count != fails_at) return false;
  fired = true;
  return true;
}

void* Allocate(int size) { return Fails() ? nullptr : own.xMalloc(size); }
void* Reallocate(void* memory, int size) { return Fails() ? nullptr : own.xRealloc(memory, size); }

}  // namespace

void Install() {
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &own) != SQLITE_OK) {
    throw std::runtime_error("SQLite runs already");
  }
  sqlite3_mem_methods failing = own;
  failing.xMalloc = Allocate;
  failing.xRealloc = Reallocate;
  sqlite3_config(SQLITE_CONFIG_MALLOC, &failing);
}

void Arm(std::size_t n) {
  count = 0;
  fired = false;
  fails_at = n;
  armed = true;
}

std::size_t Disarm() {
  armed = false;
  return count;
}

bool Fired() { return fired; }

}  // namespace vorek::failing_sqlite
