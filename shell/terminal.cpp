#include "shell/terminal.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"
#include "shell/command_line_answers.h"
#include "shell/panel_text.h"

namespace {

constexpr int kEscapeWaitMs = 40;  // how soon the rest of a key's sequence follows its Escape

std::string HistoryPath() {
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : ".") + "/.tarsa_history";
}

bool CommandRuns() { return CTarsaStandIn::CommandLine().RunningCommand() != nullptr; }

}  // namespace

TsTerminal::TsTerminal(int in, int out) : m_in(in), m_out(out) {
  // Raw for as long as the program reads the terminal, not only while a line is read: keys typed
  // ahead while a command works must reach the editor as they were typed, not be echoed and
  // edited by the terminal (its Ctrl-U would drop them). Output still turns "\n" into a new line.
  m_is_terminal = isatty(in) && tcgetattr(in, &m_cooked) == 0;
  if (m_is_terminal) {
    termios raw = m_cooked;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG | IEXTEN);
    raw.c_iflag &= ~static_cast<tcflag_t>(IXON | ICRNL | INLCR);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    m_is_terminal = tcsetattr(in, TCSADRAIN, &raw) == 0;
  }
  m_history.Keep(HistoryPath());
}

TsTerminal::~TsTerminal() {
  if (m_is_terminal) tcsetattr(m_in, TCSADRAIN, &m_cooked);
}

void TsTerminal::Idle() { TsShowPanelChanges(); }

IUserAnswers& TsTerminal::Answers() { return TarsaCommandLineAnswers(); }

ITsFrontEnd::UnsavedChanges TsTerminal::AskAboutChanges(const std::wstring& document) {
  return TsAskAboutChangesOnCommandLine(document);
}

void TsTerminal::Write(const std::wstring& text) { Out(text); }

void TsTerminal::Out(const std::wstring& text) {
  const std::string utf8 = ZK_wString(text).ToUtf8();
  size_t written = 0;
  while (written < utf8.size()) {
    const ssize_t n = ::write(m_out, utf8.data() + written, utf8.size() - written);
    if (n <= 0) return;
    written += static_cast<size_t>(n);
  }
}

bool TsTerminal::ReadLine(const std::wstring& prompt, std::wstring& line) {
  if (m_ended) return false;
  m_prompt = prompt;
  m_text.clear();
  m_cursor = 0;
  Show();
  for (;;) {
    const int key = ReadKey();
    if (key == ended) {
      m_ended = true;
      Out(L"\n");
      return false;
    }
    if (Take(key, line)) return true;
  }
}

bool TsTerminal::Take(int key, std::wstring& line) {
  switch (key) {
    case '\r':
    case '\n':
      Out(L"\n");
      line = m_text;
      m_history.Add(line);
      return true;
    case 3:  // Ctrl-C
    case escape:
      if (CommandRuns()) {
        Out(key == 3 ? L" ^C\n" : L" (cancelled)\n");
        line = L"!";  // cancels the command, whichever of its prompts asks
        return true;
      }
      if (key == 3) Out(L" ^C\n");
      m_text.clear();
      m_cursor = 0;
      break;
    case 4:  // Ctrl-D
      if (!m_text.empty()) {
        if (m_cursor < m_text.size()) m_text.erase(m_cursor, 1);
        break;
      }
      line = CommandRuns() ? L"!" : L"Exit";
      Out(CommandRuns() ? L" (cancelled)\n" : L"Exit\n");
      return true;
    case '\t': {
      const TsCompletedLine completed = TsCompleteLine(m_prompt, m_text);
      if (!completed.choices.empty()) {
        std::wstring listed = L"\n";
        for (const std::wstring& choice : completed.choices) listed += choice + L"  ";
        Out(listed + L"\n");
      }
      m_text = completed.line;
      m_cursor = m_text.size();
      break;
    }
    case up:
    case down:
      m_text = m_history.Recall(key == up ? -1 : 1, m_text);
      m_cursor = m_text.size();
      break;
    case left:
    case 2:  // Ctrl-B
      if (m_cursor > 0) --m_cursor;
      break;
    case right:
    case 6:  // Ctrl-F
      if (m_cursor < m_text.size()) ++m_cursor;
      break;
    case home:
    case 1:  // Ctrl-A
      m_cursor = 0;
      break;
    case end:
    case 5:  // Ctrl-E
      m_cursor = m_text.size();
      break;
    case 0x7f:
    case 8:  // Backspace
      if (m_cursor > 0) m_text.erase(--m_cursor, 1);
      break;
    case erase:
      if (m_cursor < m_text.size()) m_text.erase(m_cursor, 1);
      break;
    case 11:  // Ctrl-K
      m_text.erase(m_cursor);
      break;
    case 21:  // Ctrl-U
      m_text.erase(0, m_cursor);
      m_cursor = 0;
      break;
    case 23: {  // Ctrl-W: the word before the cursor
      size_t start = m_cursor;
      while (start > 0 && m_text[start - 1] == L' ') --start;
      while (start > 0 && m_text[start - 1] != L' ') --start;
      m_text.erase(start, m_cursor - start);
      m_cursor = start;
      break;
    }
    default:
      if (key < 0x20) return false;  // other control keys and sequences do nothing
      m_text.insert(m_cursor++, 1, static_cast<wchar_t>(key));
      if (m_cursor == m_text.size()) {  // typed at the end: the character is all that changes
        Out(std::wstring(1, static_cast<wchar_t>(key)));
        return false;
      }
      break;
  }
  Show();
  return false;
}

void TsTerminal::Show() {
  std::wstring shown = L"\r" + m_prompt + L" " + m_text + L"\x1b[K";
  if (m_cursor < m_text.size())
    shown += L"\x1b[" + std::to_wstring(m_text.size() - m_cursor) + L"D";
  Out(shown);
}

int TsTerminal::ReadByte(int wait_ms) {
  if (m_pending >= 0) {
    const int byte = m_pending;
    m_pending = -1;
    return byte;
  }
  if (wait_ms >= 0) {
    pollfd ready{m_in, POLLIN, 0};
    if (poll(&ready, 1, wait_ms) <= 0) return -1;
  }
  unsigned char byte = 0;
  for (;;) {
    const ssize_t n = ::read(m_in, &byte, 1);
    if (n == 1) return byte;
    if (n < 0 && errno == EINTR) continue;  // a signal; the read goes on
    return -1;
  }
}

int TsTerminal::ReadKey() {
  const int first = ReadByte(-1);
  if (first < 0) return ended;
  if (first == 0x1b) {
    const int next = ReadByte(kEscapeWaitMs);
    if (next != '[' && next != 'O') {
      m_pending = next;  // the key typed after Escape is the next key, never lost
      return escape;
    }
    std::string sequence;
    for (int byte = ReadByte(kEscapeWaitMs); byte >= 0; byte = ReadByte(kEscapeWaitMs)) {
      sequence += static_cast<char>(byte);
      if (byte >= 0x40 && byte <= 0x7e) break;
    }
    if (sequence == "A") return up;
    if (sequence == "B") return down;
    if (sequence == "C") return right;
    if (sequence == "D") return left;
    if (sequence == "H" || sequence == "1~" || sequence == "7~") return home;
    if (sequence == "F" || sequence == "4~" || sequence == "8~") return end;
    if (sequence == "3~") return erase;
    return other;
  }
  if (first < 0x80) return first;
  // A character of several bytes: its first byte says how many follow.
  const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : first >= 0xc0 ? 1 : 0;
  std::string utf8(1, static_cast<char>(first));
  for (int i = 0; i < more; ++i) {
    const int byte = ReadByte(-1);
    if (byte < 0) return ended;
    utf8 += static_cast<char>(byte);
  }
  const std::wstring decoded = ZK_wString::FromUtf8(utf8).Text();
  return decoded.empty() ? other : static_cast<int>(decoded[0]);
}
