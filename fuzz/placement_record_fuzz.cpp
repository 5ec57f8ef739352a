// Feeds arbitrary bytes to the placement record's Read. Whatever the bytes, nothing may crash,
// leak or touch memory it does not own, and a record that was read writes bytes that read back
// to the same accumulated transform and entries.

#include <cstdint>
#include <cstdlib>

#include "data/placement_record.h"
#include "fuzz/fuzz_session.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZK_BinaryMemoryArchive in(FuzzSession::Bytes(data, size));
  CKorvoUserData record;
  if (!record.Read(in)) return 0;
  ZK_BinaryMemoryArchive out;
  if (!record.Write(out)) std::abort();
  ZK_BinaryMemoryArchive again(out.Bytes());
  CKorvoUserData copy;
  if (!copy.Read(again) || !FuzzSession::SameRecord(copy, record)) std::abort();
  return 0;
}
