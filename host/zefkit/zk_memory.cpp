#include "host/zefkit/zk_memory.h"

#include <cstdlib>

void* ZK_malloc(size_t size) { return std::malloc(size == 0 ? 1 : size); }

void ZK_free(void* block) { std::free(block); }
