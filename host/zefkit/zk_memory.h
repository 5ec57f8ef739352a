// The kernel's memory allocator, for plug-ins that manage blocks of their own.
#pragma once

#include <cstddef>

// A block of `size` bytes, aligned for any type, or null when none can be had. Free it with
// ZK_free.
void* ZK_malloc(size_t size);
void ZK_free(void* block);
