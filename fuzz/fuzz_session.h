// FuzzSession: the host with the stance plug-in loaded and one document with stances, in which
// the fuzz targets run their inputs. Building the session costs more than most inputs do, so it
// is built once per process and put back into its start state after every input: the fuzzer then
// runs thousands of inputs a second in constant memory, and every input meets the same session.
//
// The application owns the session's document and objects; the start state's copies live in a
// static until the process ends. Everything an input allocates is freed when it ends, so that the
// fuzzer's leak check sees balanced allocations and scans only when something really leaked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class CKorvoUserData;
class CTarsaDoc;

class FuzzSession {
 public:
  // The session's document, the active one, in its start state: a box "door", a hidden box
  // "frame", a polyline "rail" and a light, each moved once since stance Front was saved with all
  // of them; stance Side holds the door only. The session is built on the first call.
  static CTarsaDoc& Begin();

  // Ends an input: closes every other document and drops its stance table, closes the Stances
  // panel, drops the command line's input and output and what the host showed, undoes every step
  // the input recorded and forgets it, deselects everything, and puts the stance table and the
  // records back as they were. When the document no longer holds exactly its start objects (or
  // is gone), the whole session is built anew.
  static void End();

  static std::vector<unsigned char> Bytes(const uint8_t* data, size_t size) {
    return std::vector<unsigned char>(data, data + size);
  }

  // How often End had to build the session anew since the process started.
  static int RebuildCount();

  // Same accumulated transform and the same entries in the same order: what a record's bytes
  // keep.
  static bool SameRecord(const CKorvoUserData& a, const CKorvoUserData& b);
};
