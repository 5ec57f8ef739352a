// Feeds arbitrary bytes to the plug-in as its document block: read into a document with stances
// as when a file is opened, and as when one is imported. Whatever the bytes, nothing may crash,
// leak or touch memory it does not own.

#include <cstdint>

#include "events/event_watcher.h"
#include "fuzz/fuzz_session.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_archive.h"
#include "plugin/korvo_plugin.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const bool merge : {false, true}) {
    CTarsaDoc& doc = FuzzSession::Begin();
    CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
    const unsigned int step = doc.BeginUndoRecord(L"Import");
    watcher.OnBeginOpenDocument(doc, L"fuzz.tsm", merge, false);
    ZK_BinaryMemoryArchive in(FuzzSession::Bytes(data, size));
    KorvoPlugIn().ReadDocument(doc, in, CTarsaFileReadOptions(L"fuzz.tsm", merge, false));
    watcher.OnEndOpenDocument(doc, L"fuzz.tsm", merge, false);
    doc.EndUndoRecord(step);
    FuzzSession::End();
  }
  return 0;
}
