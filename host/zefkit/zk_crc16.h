// The kernel's 16-bit cyclic redundancy check (polynomial 0x1021, most significant bit first).
#pragma once

#include <cstddef>

// Continues a CRC from `remainder` over `size` bytes of `buffer`. A null buffer or size 0 gives
// `remainder` back.
unsigned short ZK_CRC16(unsigned short remainder, size_t size, const void* buffer);
