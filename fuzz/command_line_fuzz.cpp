// Feeds arbitrary text to the command line, with the Stance command registered and a document
// with stances open. Each line is typed by the user, except a line starting with "@", whose rest
// arrives as a macro (as the panel sends one) while the user is being asked. Whatever the text,
// nothing may crash, hang, leak or touch memory it does not own. With KORVO_FUZZ_ECHO set, the
// command line's output is shown, to see what an input does.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <string>

#include "fuzz/fuzz_session.h"
#include "host/tarsa/standin/tarsa_standin.h"

namespace {

// Beyond this the text only makes copies of copies; input ends there.
constexpr int kMaxObjects = 2000;

int ObjectCount(CTarsaDoc& doc) {
  int count = 0;
  CTarsaObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object && count <= kMaxObjects; object = it.Next())
    ++count;
  return count;
}

std::deque<std::wstring> Lines(const uint8_t* data, size_t size) {
  const std::wstring text =
      ZK_wString::FromUtf8(std::string(reinterpret_cast<const char*>(data), size)).Text();
  std::deque<std::wstring> lines;
  size_t start = 0;
  for (size_t end; (end = text.find(L'\n', start)) != std::wstring::npos; start = end + 1) {
    lines.push_back(text.substr(start, end - start));
  }
  lines.push_back(text.substr(start));
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CTarsaDoc& doc = FuzzSession::Begin();
  std::deque<std::wstring> lines = Lines(data, size);
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  command_line.SetReader([&](const std::wstring&, std::wstring& line) {
    if (lines.empty() || ObjectCount(doc) > kMaxObjects) return false;
    line = lines.front();
    lines.pop_front();
    if (line.empty() || line[0] != L'@') return true;
    command_line.RunScript(line.c_str() + 1, 0);
    return false;
  });
  // A macro ends the reading loop; the user goes on typing after it.
  while (!lines.empty() && ObjectCount(doc) <= kMaxObjects) {
    command_line.ProcessInput();
  }
  if (std::getenv("KORVO_FUZZ_ECHO")) {
    std::fputs(ZK_wString(command_line.TakeOutput()).ToUtf8().c_str(), stdout);
  }
  FuzzSession::End();
  return 0;
}
