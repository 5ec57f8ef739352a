// The kernel's 32-bit cyclic redundancy check: the common CRC-32 (reflected polynomial
// 0xEDB88320, initial and final value 0xFFFFFFFF), the check of the host's model-file blocks.
#pragma once

#include <cstddef>

// Continues a CRC from `crc`, a previous result (0 to start), over `size` bytes of `buffer`. A
// null buffer or size 0 gives `crc` back.
unsigned int ZK_CRC32(unsigned int crc, size_t size, const void* buffer);
