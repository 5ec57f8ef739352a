#include "host/zefkit/zk_array.h"

#include <cstdlib>

void ZK_qsort(void* base, size_t count, size_t size, int (*compare)(const void*, const void*)) {
  if (base != nullptr && count > 1 && size > 0 && compare != nullptr) {
    std::qsort(base, count, size, compare);
  }
}
