#include "shell/completion.h"

#include <algorithm>

#include "host/tarsa/standin/tarsa_standin.h"

namespace {

// The option names a prompt shows between " ( " and " )".
std::vector<std::wstring> OptionNames(const std::wstring& prompt) {
  std::vector<std::wstring> names;
  const size_t open = prompt.rfind(L" ( ");
  const size_t close = prompt.rfind(L" )");
  if (open == std::wstring::npos || close == std::wstring::npos || close < open) return names;
  size_t at = open + 3;
  while (at < close) {
    size_t end = prompt.find(L' ', at);
    if (end == std::wstring::npos || end > close) end = close;
    const std::wstring word = prompt.substr(at, end - at);
    if (!word.empty()) names.push_back(word.substr(0, word.find(L'=')));
    at = end + 1;
  }
  return names;
}

}  // namespace

std::vector<std::wstring> TsCompletions(const std::wstring& prompt, const std::wstring& word) {
  const size_t marks = word.find_first_not_of(L"-_!");
  const std::wstring kept = word.substr(0, std::min(marks, word.size()));
  const std::wstring start = word.substr(kept.size());
  std::vector<std::wstring> names;
  if (prompt == L"Command:") {
    for (CTarsaCommand* command : CTarsaStandIn::Commands()) {
      names.push_back(command->EnglishCommandName());
    }
  } else {
    names = OptionNames(prompt);
  }
  std::vector<std::wstring> found;
  for (const std::wstring& name : names) {
    const ZK_wString head(name.c_str(), static_cast<int>(std::min(start.size(), name.size())));
    if (name.size() >= start.size() && head.CompareNoCase(start.c_str()) == 0) {
      found.push_back(kept + name);
    }
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}
