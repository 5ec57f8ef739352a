// Feeds arbitrary bytes to the placement record's Read. Whatever the bytes, nothing may crash,
// leak or touch memory it does not own, and a record that was read writes bytes that read back
// to the same accumulated transform and entries.

#include <cstdint>
#include <cstdlib>

#include "data/placement_record.h"
#include "fuzz/fuzz_session.h"

namespace {

bool Same(const CKorvoUserData& a, const CKorvoUserData& b) {
  if (!(a.m_accumulated_xform == b.m_accumulated_xform)) return false;
  if (a.m_entries.GetSize() != b.m_entries.GetSize()) return false;
  for (INT_PTR i = 0; i < a.m_entries.GetSize(); ++i) {
    if (!(a.m_entries[i]->m_id == b.m_entries[i]->m_id) ||
        !(a.m_entries[i]->m_xform == b.m_entries[i]->m_xform)) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZK_BinaryMemoryArchive in(FuzzSession::Bytes(data, size));
  CKorvoUserData record;
  if (!record.Read(in)) return 0;
  ZK_BinaryMemoryArchive out;
  if (!record.Write(out)) std::abort();
  ZK_BinaryMemoryArchive again(out.Bytes());
  CKorvoUserData copy;
  if (!copy.Read(again) || !Same(copy, record)) std::abort();
  return 0;
}
