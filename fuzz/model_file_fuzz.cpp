// Feeds arbitrary bytes to the host as a model file, opened and merged with the stance plug-in
// loaded: whatever the bytes, nothing may crash, leak or touch memory it does not own.
//   build/fuzz/fuzz/model_file_fuzz -max_total_time=60 /tmp/corpus fuzz/corpus
// (new inputs go to the first folder, so the seed corpus stays as committed)

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include <unistd.h>

#include "events/event_watcher.h"
#include "host/tarsa_app.h"
#include "host/tarsa_model_file.h"
#include "plugin/korvo_plugin.h"

namespace {

const std::string& Path() {
  static const std::string path = "/tmp/model_file_fuzz_" + std::to_string(getpid()) + ".tsm";
  return path;
}

void LoadPlugIn() {
  static bool loaded = false;
  if (loaded) return;
  loaded = true;
  KorvoPlugIn().EventWatcher()->Register();
  KorvoPlugIn().EventWatcher()->Enable(true);
  TarsaApp().AddPlugIn(KorvoPlugIn());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  LoadPlugIn();
  {
    std::ofstream file(Path(), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::wstring error;
  if (CTarsaDoc* opened = TarsaApp().OpenDocument(Path(), error)) {
    TarsaApp().CloseDocument(opened->RuntimeSerialNumber());
  }
  CTarsaDoc* doc = TarsaApp().NewDocument();
  const unsigned int step = doc->BeginUndoRecord(L"Import");
  TsReadModelFile(*doc, Path(), true, false, error);
  doc->EndUndoRecord(step);
  doc->Undo();
  TarsaApp().CloseDocument(doc->RuntimeSerialNumber());
  TarsaApp().CommandLine().TakeOutput();
  TarsaApp().TakeMessageBoxes();
  std::remove(Path().c_str());
  return 0;
}
