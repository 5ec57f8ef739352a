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
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "plugin/korvo_plugin.h"

namespace {

const std::string& Path() {
  static const std::string path = "/tmp/model_file_fuzz_" + std::to_string(getpid()) + ".tsm";
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
  {
    std::ofstream file(Path(), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::wstring error;
  if (CTarsaDoc* opened = CTarsaStandIn::OpenDocument(Path(), error)) {
    CTarsaStandIn::CloseDocument(opened->RuntimeSerialNumber());
  }
  CTarsaDoc* doc = CTarsaStandIn::NewDocument();
  const unsigned int step = doc->BeginUndoRecord(L"Import");
  TsReadModelFile(*doc, Path(), true, false, error);
  doc->EndUndoRecord(step);
  CTarsaStandIn::Undo(*doc);
  CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
  CTarsaStandIn::CommandLine().TakeOutput();
  CTarsaStandIn::TakeMessageBoxes();
  std::remove(Path().c_str());
  return 0;
}
