// Feeds arbitrary bytes to the stance table's Read. Whatever the bytes, nothing may crash, leak or
// touch memory it does not own, and a table that was read writes bytes that read back equal.

#include <cstdint>
#include <cstdlib>

#include "data/stance_table.h"
#include "fuzz/fuzz_session.h"
#include "host/zefkit/zk_archive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZK_BinaryMemoryArchive in(FuzzSession::Bytes(data, size));
  CKorvoDocData table;
  if (!table.Read(in)) return 0;
  ZK_BinaryMemoryArchive out;
  if (!table.Write(out)) std::abort();
  ZK_BinaryMemoryArchive again(out.Bytes());
  CKorvoDocData copy;
  if (!copy.Read(again) || !(copy == table)) std::abort();
  return 0;
}
