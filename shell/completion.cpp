#include "shell/completion.h"

#include <algorithm>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_localize.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"

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

// Whether the prompt is one where the Stance command asks for the name of a stance, in the
// user's language: the prompt's text, then its proposed value, its options or its colon.
bool AsksForStanceName(const std::wstring& prompt) {
  const std::pair<const wchar_t*, int> prompts[] = {{L"Name for the saved position <%s>", 19711},
                                                    {L"Name for position to append to", 35182},
                                                    {L"Name for position to update", 35183},
                                                    {L"Name for position to restore", 35184},
                                                    {L"Stance to delete", 19719},
                                                    {L"Stance to rename", 19721},
                                                    {L"Select object(s) of stance", 33393}};
  for (const auto& asked : prompts) {
    std::wstring text = TsLocalizeString(asked.first, asked.second);
    text = text.substr(0, text.find(L" <%s>"));
    if (prompt.compare(0, text.size(), text) == 0 &&
        (prompt.size() == text.size() || prompt[text.size()] == L':' ||
         prompt[text.size()] == L' ')) {
      return true;
    }
  }
  return false;
}

// A name as the command line takes it back as one answer: quoted, with its quotes doubled, when
// it holds a blank or a quote.
std::wstring AsAnswer(const std::wstring& name) {
  if (name.find_first_of(L" \t\"") == std::wstring::npos) return name;
  std::wstring quoted = L"\"";
  for (wchar_t c : name) quoted += c == L'"' ? std::wstring(L"\"\"") : std::wstring(1, c);
  return quoted + L"\"";
}

// The stances of the document the commands work on, as answers.
std::vector<std::wstring> StanceNames() {
  std::vector<std::wstring> names;
  ITsStanceDynamicAccess* access = CTarsaStandIn::StanceDynamicAccess();
  CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
  if (access == nullptr || doc == nullptr) return names;
  ZK_SimpleArray<ZK_UUID> ids;
  access->GetStanceIds(*doc, ids);
  for (int i = 0; i < ids.Count(); ++i) {
    ZK_wString name;
    if (access->GetStanceName(*doc, ids[i], name)) names.push_back(AsAnswer(name.Text()));
  }
  return names;
}

bool StartsWith(const std::wstring& name, const std::wstring& start) {
  if (name.size() < start.size()) return false;
  return ZK_wString(name.c_str(), static_cast<int>(start.size())).CompareNoCase(start.c_str()) == 0;
}

std::vector<std::wstring> Sorted(std::vector<std::wstring> words) {
  std::sort(words.begin(), words.end());
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

}  // namespace

std::vector<std::wstring> TsCompletions(const std::wstring& prompt, const std::wstring& word) {
  std::vector<std::wstring> found;
  if (AsksForStanceName(prompt)) {
    // A quoted name matches what is typed with its opening quote or without it.
    const bool typed_quote = !word.empty() && word[0] == L'"';
    for (const std::wstring& name : StanceNames()) {
      const bool skip_quote = name[0] == L'"' && !typed_quote;
      if (StartsWith(skip_quote ? name.substr(1) : name, word)) found.push_back(name);
    }
    return Sorted(found);
  }
  const size_t marks = word.find_first_not_of(L"-_!");
  const std::wstring kept = word.substr(0, std::min(marks, word.size()));
  std::vector<std::wstring> names;
  if (prompt == L"Command:") {
    for (CTarsaCommand* command : CTarsaStandIn::Commands()) {
      names.push_back(command->EnglishCommandName());
    }
  } else {
    names = OptionNames(prompt);
  }
  for (const std::wstring& name : names) {
    if (StartsWith(name, word.substr(kept.size()))) found.push_back(kept + name);
  }
  return Sorted(found);
}
