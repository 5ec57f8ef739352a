#include "host/tarsa/standin/tarsa_command_line.h"

#include <cwctype>

#include "host/tarsa/tarsa_app.h"

namespace {

CTarsaToken::Kind KindOf(const std::wstring& word) {
  const ZK_wString w(word);
  if (w.CompareNoCase(L"_Enter") == 0) return CTarsaToken::enter;
  if (w.CompareNoCase(L"_Escape") == 0) return CTarsaToken::escape;
  if (w.CompareNoCase(L"_Pause") == 0) return CTarsaToken::pause;
  return CTarsaToken::text;
}

CTarsaToken Special(CTarsaToken::Kind kind) {
  CTarsaToken token;
  token.kind = kind;
  return token;
}

}  // namespace

std::vector<CTarsaToken> TsTokenize(const std::wstring& text, bool echo) {
  std::vector<CTarsaToken> tokens;
  size_t i = 0;
  while (i < text.size()) {
    if (std::iswspace(static_cast<wint_t>(text[i]))) {
      ++i;
      continue;
    }
    CTarsaToken token;
    token.echo = echo;
    if (text[i] == L'"') {
      // Up to the closing quote, or the end of the text; "" inside stands for one quote.
      size_t end = i + 1;
      for (; end < text.size(); ++end) {
        if (text[end] != L'"') {
          token.word += text[end];
        } else if (end + 1 < text.size() && text[end + 1] == L'"') {
          token.word += text[++end];
        } else {
          break;
        }
      }
      token.quoted = true;
      token.typed = text.substr(i, end + 1 - i);
      if (end == text.size()) token.typed += L'"';
      i = end + 1;
      tokens.push_back(token);
      continue;
    }
    size_t end = i;
    while (end < text.size() && !std::iswspace(static_cast<wint_t>(text[end]))) ++end;
    std::wstring word = text.substr(i, end - i);
    i = end;
    if (word[0] == L'!') {
      CTarsaToken abort = Special(CTarsaToken::abort);
      abort.echo = echo;
      abort.typed = L"!";
      tokens.push_back(abort);
      word.erase(0, 1);
      if (word.empty()) continue;
    }
    token.kind = KindOf(word);
    token.word = word;
    token.typed = word;
    tokens.push_back(token);
  }
  return tokens;
}

void CTarsaCommandLine::Print(const std::wstring& text) {
  m_output += text;
  if (m_writer) m_writer(text);
}

std::wstring CTarsaCommandLine::TakeOutput() {
  std::wstring output;
  output.swap(m_output);
  return output;
}

CTarsaToken CTarsaCommandLine::Ask(const std::wstring& prompt) {
  if (m_abort) return Special(CTarsaToken::escape);
  CTarsaToken token;
  // A macro that arrives while the user is being asked (a panel clicked meanwhile) answers in
  // the user's place.
  const bool have = TakeMacroAnswer(token) || NextUserToken(prompt, token) || TakeMacroToken(token);
  if (m_abort) {
    // The user acted elsewhere while being asked (RunWhenNoCommand): what was typed stays for
    // later, and the command is cancelled.
    if (have) m_user.push_front(token);
    token = Special(CTarsaToken::escape);
  } else if (!have) {
    token = Special(CTarsaToken::escape);
  }
  if (token.echo) Print(prompt + (token.typed.empty() ? L"" : L" " + token.typed) + L"\n");
  if (token.kind == CTarsaToken::abort) {
    m_abort = true;
    token.kind = CTarsaToken::escape;
  }
  return token;
}

bool CTarsaCommandLine::TakeGivenWord(const std::wstring& prompt,
                                      const std::vector<std::wstring>& words, std::wstring& word) {
  if (m_abort) return false;
  std::deque<CTarsaToken>& given = m_paused_depth == 0 && !m_macro.empty() ? m_macro : m_user;
  if (given.empty() || given.front().kind != CTarsaToken::text || given.front().quoted) {
    return false;
  }
  const CTarsaToken token = given.front();
  for (const std::wstring& candidate : words) {
    if (ZK_wString(candidate.c_str()).CompareNoCase(token.word.c_str()) != 0) continue;
    given.pop_front();
    if (token.echo) Print(prompt + L" " + token.typed + L"\n");
    word = candidate;
    return true;
  }
  return false;
}

CTarsaCommand::result CTarsaCommandLine::RunCommand(const std::wstring& typed) {
  std::wstring name = typed;
  const bool interactive = name.empty() || name[0] != L'-';
  if (!interactive) name.erase(0, 1);
  const bool english = !name.empty() && name[0] == L'_';
  if (english) name.erase(0, 1);
  CTarsaCommand* command = CTarsaCommand::Find(name.c_str(), english);
  if (command == nullptr) {
    Print(L"Unknown command: " + typed + L"\n");
    return CTarsaCommand::failure;
  }
  CTarsaApp& app = TarsaApp();
  CTarsaDoc* doc = app.ObsoleteActiveDoc();
  const unsigned int doc_serial_number = doc ? doc->RuntimeSerialNumber() : 0;
  const unsigned int undo = doc ? doc->BeginUndoRecord(command->EnglishCommandName()) : 0;
  CTarsaCommand* outer = m_running;
  CTarsaDoc* outer_doc = m_running_doc;
  m_running = command;
  m_running_doc = doc;
  const CTarsaCommandContext context(doc, interactive);
  app.NotifyEventWatchers([&](CTarsaEventWatcher& w) { w.OnBeginCommand(*command, context); });
  const CTarsaCommand::result result = command->Execute(context);
  app.NotifyEventWatchers(
      [&](CTarsaEventWatcher& w) { w.OnEndCommand(*command, context, result); });
  m_running = outer;
  m_running_doc = outer_doc;
  if (m_running == nullptr) {
    m_abort = false;
    m_paused_depth = 0;
  }
  // The command may have closed its document.
  if (CTarsaDoc* still_open = CTarsaDoc::FromRuntimeSerialNumber(doc_serial_number)) {
    if (undo != 0) still_open->EndUndoRecord(undo);
  }
  while (m_running == nullptr && !m_after_command.empty()) {
    const std::function<void()> action = std::move(m_after_command.front());
    m_after_command.pop_front();
    action();
  }
  return result;
}

void CTarsaCommandLine::Reset() {
  m_reader = nullptr;
  m_writer = nullptr;
  m_output.clear();
  m_macro.clear();
  m_user.clear();
  m_after_command.clear();
  m_question = CTarsaQuestion();
  m_quiet_macros = nullptr;
  m_abort = false;
  m_question_depth = 0;
  m_paused_depth = 0;
  m_echo_user_input = true;
  m_input_ended = false;
  m_failed_commands = 0;
}

void CTarsaCommandLine::EndQuestion() {
  if (m_paused_depth == m_question_depth) m_paused_depth = 0;
  --m_question_depth;
}

void CTarsaCommandLine::PassOverPause() {
  if (!m_macro.empty() && m_macro.front().kind == CTarsaToken::pause) m_macro.pop_front();
}

void CTarsaCommandLine::EndInput() {
  m_input_ended = true;
  m_user.clear();
  m_macro.clear();
  m_after_command.clear();
}

void CTarsaCommandLine::RunScript(const wchar_t* macro, int echo) {
  if (echo == 0 && m_quiet_macros && macro != nullptr) {
    m_quiet_macros(std::wstring(L"Command: ") + macro + L"\n");
  }
  const std::vector<CTarsaToken> tokens = TsTokenize(macro ? macro : L"", echo != 0);
  m_macro.insert(m_macro.begin(), tokens.begin(), tokens.end());
  if (m_running != nullptr) return;
  const size_t rest = m_macro.size() - tokens.size();
  while (m_macro.size() > rest) {
    const CTarsaToken token = m_macro.front();
    m_macro.pop_front();
    RunTopLevel(token);
  }
}

void CTarsaCommandLine::ProcessInput() {
  // Words a macro left behind (after a "!" that cancelled the command it was given to) run
  // before anything more is read from the user.
  CTarsaToken token;
  while (TakeMacroToken(token) || NextUserToken(L"Command:", token) || TakeMacroToken(token)) {
    RunTopLevel(token);
  }
}

void CTarsaCommandLine::RunWhenNoCommand(std::function<void()> action) {
  if (m_running == nullptr) {
    action();
    return;
  }
  m_abort = true;
  m_after_command.push_back(std::move(action));
}

CTarsaDoc* CTarsaCommandLine::Document() const {
  return m_running ? m_running_doc : TarsaApp().ObsoleteActiveDoc();
}

bool CTarsaCommandLine::TakeMacroToken(CTarsaToken& token) {
  if (m_macro.empty()) return false;
  token = m_macro.front();
  m_macro.pop_front();
  return token.kind != CTarsaToken::pause;
}

bool CTarsaCommandLine::TakeMacroAnswer(CTarsaToken& token) {
  if (m_paused_depth != 0) return false;
  if (TakeMacroToken(token)) return true;
  // A pause taken hands this question to the user (an answer asked outside a question, one).
  if (token.kind == CTarsaToken::pause) m_paused_depth = m_question_depth;
  return false;
}

bool CTarsaCommandLine::NextUserToken(const std::wstring& prompt, CTarsaToken& token) {
  if (m_input_ended) return false;
  if (m_user.empty()) {
    std::wstring line;
    if (!m_reader || !m_reader(prompt, line)) return false;
    const std::vector<CTarsaToken> tokens = TsTokenize(line, m_echo_user_input);
    if (tokens.empty()) {
      m_user.push_back(Special(CTarsaToken::enter));
      m_user.back().echo = m_echo_user_input;
    }
    m_user.insert(m_user.end(), tokens.begin(), tokens.end());
  }
  token = m_user.front();
  m_user.pop_front();
  return true;
}

void CTarsaCommandLine::RunTopLevel(const CTarsaToken& token) {
  if (token.kind != CTarsaToken::text) return;
  if (token.echo) Print(L"Command: " + token.typed + L"\n");
  if (RunCommand(token.word) == CTarsaCommand::failure) ++m_failed_commands;
}
