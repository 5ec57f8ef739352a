#include "shell/script_input.h"

#include <sys/stat.h>
#include <fstream>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"

struct CTarsaScriptInput::Script {
  std::unique_ptr<std::ifstream> m_file;  // null when reading a stream the caller keeps
  std::istream* m_stream = nullptr;

  // The next line that is not a comment; false at the end.
  bool Next(std::wstring& line) {
    std::string utf8;
    while (std::getline(*m_stream, utf8)) {
      if (!utf8.empty() && utf8.back() == '\r') utf8.pop_back();
      const size_t first = utf8.find_first_not_of(" \t");
      if (first != std::string::npos && utf8[first] == '#') continue;
      line = ZK_wString::FromUtf8(utf8).Text();
      return true;
    }
    return false;
  }
};

CTarsaScriptInput::CTarsaScriptInput() = default;

CTarsaScriptInput::~CTarsaScriptInput() = default;

CTarsaScriptInput& TarsaScriptInput() {
  static CTarsaScriptInput input;
  return input;
}

void CTarsaScriptInput::SetTerminal(Reader reader) {
  m_terminal = std::move(reader);
  m_script.reset();
}

void CTarsaScriptInput::SetScript(std::istream& stream) {
  m_script.reset(new Script{nullptr, &stream});
  m_terminal = nullptr;
}

bool CTarsaScriptInput::PushScriptFile(const std::string& path, std::wstring& error) {
  struct stat status;
  auto file = std::make_unique<std::ifstream>(path);
  // Any file that reads, a device such as /dev/null or a pipe included; a folder opens as a
  // stream that reads nothing.
  if (stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode) || !*file) {
    error = L"Cannot read the script " + ZK_wString::FromUtf8(path).Text() + L".";
    return false;
  }
  std::istream* stream = file.get();
  m_files.emplace_back(new Script{std::move(file), stream});
  return true;
}

bool CTarsaScriptInput::Read(const std::wstring& prompt, std::wstring& line) {
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  while (!m_files.empty()) {
    if (m_files.back()->Next(line)) {
      command_line.SetEchoUserInput(true);
      return true;
    }
    m_files.pop_back();
  }
  command_line.SetEchoUserInput(m_terminal == nullptr);
  if (m_terminal) return m_terminal(prompt, line);
  return m_script && m_script->Next(line);
}
