#include "shell/terminal.h"

#include <editline/readline.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "host/zefkit/zk_string.h"
#include "shell/completion.h"

namespace {

std::wstring g_prompt;  // the prompt being answered, for completion

std::string HistoryPath() {
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : ".") + "/.tarsa_history";
}

char* NextMatch(const char* text, int state) {
  static std::vector<std::wstring> matches;
  static size_t next = 0;
  if (state == 0) {
    matches = TsCompletions(g_prompt, ZK_wString::FromUtf8(text).Text());
    next = 0;
  }
  if (next >= matches.size()) return nullptr;
  return strdup(ZK_wString(matches[next++]).ToUtf8().c_str());
}

char** Complete(const char* text, int, int) {
  rl_attempted_completion_over = 1;  // no file names
  return rl_completion_matches(text, NextMatch);
}

}  // namespace

CTarsaScriptInput::Reader TsTerminalReader() {
  return [](const std::wstring& prompt, std::wstring& line) {
    static bool started = false;
    if (!started) {
      started = true;
      rl_attempted_completion_function = Complete;
      read_history(HistoryPath().c_str());
    }
    g_prompt = prompt;
    char* typed = readline(ZK_wString(prompt + L" ").ToUtf8().c_str());
    if (typed == nullptr) return false;
    if (*typed != 0) {
      add_history(typed);
      write_history(HistoryPath().c_str());
    }
    line = ZK_wString::FromUtf8(typed).Text();
    std::free(typed);
    return true;
  };
}
