#include "shell/script_input.h"

#include <sys/stat.h>

#include <fstream>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"
#include "shell/front_end.h"

bool TsScriptLines::Next(std::wstring& line) {
  std::string utf8;
  while (std::getline(m_stream, utf8)) {
    if (!utf8.empty() && utf8.back() == '\r') utf8.pop_back();
    const size_t first = utf8.find_first_not_of(" \t");
    if (first != std::string::npos && utf8[first] == '#') continue;
    line = ZK_wString::FromUtf8(utf8).Text();
    return true;
  }
  return false;
}

bool TsOpenScript(const std::string& path, std::ifstream& file, std::wstring& error) {
  // Any file that reads, a device such as /dev/null or a pipe included; a folder would open as a
  // stream that reads nothing.
  struct stat status;
  if (stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode)) file.open(path);
  if (file.is_open()) return true;
  error = L"Cannot read the script " + ZK_wString::FromUtf8(path).Text() + L".";
  return false;
}

struct CTarsaScriptInput::File {
  File() : lines(stream) {}
  std::ifstream stream;
  TsScriptLines lines;
};

CTarsaScriptInput::CTarsaScriptInput() = default;

CTarsaScriptInput::~CTarsaScriptInput() = default;

CTarsaScriptInput& TarsaScriptInput() {
  static CTarsaScriptInput input;
  return input;
}

bool CTarsaScriptInput::PushScriptFile(const std::string& path, std::wstring& error) {
  auto file = std::make_unique<File>();
  if (!TsOpenScript(path, file->stream, error)) return false;
  m_files.push_back(std::move(file));
  return true;
}

bool CTarsaScriptInput::ReadsScript() const {
  return !m_files.empty() || (TsFrontEnd() != nullptr && !TsFrontEnd()->ShowsTyping());
}

bool CTarsaScriptInput::Read(const std::wstring& prompt, std::wstring& line, ITsFrontEnd& user) {
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  while (!m_files.empty()) {
    if (m_files.back()->lines.Next(line)) {
      command_line.SetEchoUserInput(true);
      return true;
    }
    m_files.pop_back();
  }
  command_line.SetEchoUserInput(!user.ShowsTyping());
  return user.ReadLine(prompt, line);
}
