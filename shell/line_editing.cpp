#include "shell/line_editing.h"

#include <cwctype>
#include <fstream>

#include "host/zefkit/zk_string.h"
#include "shell/completion.h"

void TsLineHistory::Keep(const std::string& path) {
  m_path = path;
  std::ifstream file(path);
  std::string utf8;
  while (std::getline(file, utf8)) {
    if (!utf8.empty()) m_lines.push_back(ZK_wString::FromUtf8(utf8).Text());
  }
  m_browsing = false;
}

void TsLineHistory::Add(const std::wstring& line) {
  m_browsing = false;
  if (line.empty() || line.find(L'\n') != std::wstring::npos) return;
  if (!m_lines.empty() && m_lines.back() == line) return;
  m_lines.push_back(line);
  if (!m_path.empty()) std::ofstream(m_path, std::ios::app) << ZK_wString(line).ToUtf8() << '\n';
}

std::wstring TsLineHistory::Recall(int step, const std::wstring& shown) {
  if (!m_browsing || shown != m_recalled) {
    m_browsing = true;
    m_typed = shown;
    m_at = m_lines.size();
  }
  size_t at = m_at;
  for (;;) {
    if (step < 0 ? at == 0 : at >= m_lines.size()) break;
    at = step < 0 ? at - 1 : at + 1;
    if (at == m_lines.size()) {
      m_at = at;
      return m_recalled = m_typed;
    }
    const std::wstring& line = m_lines[at];
    if (line.compare(0, m_typed.size(), m_typed) == 0 && line != shown) {
      m_at = at;
      return m_recalled = line;
    }
  }
  return m_recalled = shown;
}

TsCompletedLine TsCompleteLine(const std::wstring& prompt, const std::wstring& line) {
  const size_t blank = line.find_last_of(L' ');
  const size_t start = blank == std::wstring::npos ? 0 : blank + 1;
  const std::vector<std::wstring> found = TsCompletions(prompt, line.substr(start));
  if (found.empty()) return {line, {}};
  if (found.size() == 1) return {line.substr(0, start) + found.front() + L" ", {}};
  std::wstring common = found.front();
  for (const std::wstring& other : found) {
    size_t n = 0;
    while (n < common.size() && n < other.size() &&
           std::towlower(common[n]) == std::towlower(other[n])) {
      ++n;
    }
    common.resize(n);
  }
  return {line.substr(0, start) + common, found};
}
