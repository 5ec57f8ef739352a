// Feeds arbitrary bytes to the host as a model file, opened, merged and attached with the stance
// plug-in loaded: whatever the bytes, nothing may crash, leak or touch memory it does not own, and
// a file that opens saves again.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include "fuzz/fuzz_session.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "testing/model_file_blocks.h"

namespace {

// In memory where the system has a memory file system: saves synchronise their files.
const std::string& Path() {
  static const std::string path = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") +
                                  "/model_file_fuzz_" + std::to_string(getpid()) + ".tsm";
  return path;
}

}  // namespace

// The bytes as the file, then, when their framing holds, the same blocks with fresh checksums, so
// that changes inside a block reach the readers behind the check.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ModelFileBlocks::WriteFile(Path(), FuzzSession::Bytes(data, size));
  CTarsaDoc& doc = FuzzSession::Begin();
  std::wstring error;
  if (CTarsaDoc* opened = CTarsaStandIn::OpenDocument(Path(), error)) {
    CTarsaStandIn::CloseDocument(opened->RuntimeSerialNumber());
  }
  ModelFileBlocks blocks;
  if (!blocks.Read(Path(), false)) {
    FuzzSession::End();
    return 0;
  }
  blocks.Write(Path());
  if (CTarsaDoc* opened = CTarsaStandIn::OpenDocument(Path(), error)) {
    if (!TsWriteModelFile(*opened, Path() + ".saved", error)) std::abort();
    std::remove((Path() + ".saved").c_str());
  }
  for (const bool reference : {false, true}) {
    const unsigned int step = doc.BeginUndoRecord(L"Import");
    TsReadModelFile(doc, Path(), !reference, reference, error);
    doc.EndUndoRecord(step);
    CTarsaStandIn::Undo(doc);
  }
  FuzzSession::End();
  std::remove(Path().c_str());
  return 0;
}
