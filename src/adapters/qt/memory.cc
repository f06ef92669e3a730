#include "adapters/qt/memory.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace vorek::qt {

void ReturnMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace vorek::qt
