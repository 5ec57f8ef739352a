#include "shell/command_line_answers.h"

#include <cwctype>
#include <vector>

#include "host/tarsa/standin/tarsa_command_line.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_get.h"

namespace {

// The prompt without the colon it ends with, since the command line adds its own.
std::wstring WithoutColon(std::wstring prompt) {
  while (!prompt.empty() && (prompt.back() == L':' || std::iswspace(prompt.back()))) {
    prompt.pop_back();
  }
  return prompt;
}

// A text prompt proposing `proposed`: true with the text, or `proposed` for Enter.
bool AskProposing(const std::wstring& prompt, const std::wstring& proposed, std::wstring& text) {
  CTarsaGetString get;
  const std::wstring line = WithoutColon(prompt) + L" <" + proposed + L">";
  get.SetCommandPrompt(line.c_str());
  get.AcceptNothing(true);
  switch (get.GetString()) {
    case CTarsaGet::nothing:
      text = proposed;
      return true;
    case CTarsaGet::string:
      text = get.String();
      return true;
    default:
      return false;
  }
}

// A menu item's text as one option name: without its "&" marks, blanks and trailing dots
// ("&Save Object Positions As Stance..." is "SaveObjectPositionsAsStance").
std::wstring MenuOptionName(const std::wstring& item_text) {
  std::wstring name;
  for (const wchar_t c : item_text) {
    if (c != L'&' && !std::iswspace(static_cast<wint_t>(c))) name += c;
  }
  while (!name.empty() && name.back() == L'.') name.pop_back();
  return name;
}

// A menu as a prompt. An answer that names no item dismisses the menu, as a click beside it
// does, rather than asking again: the answers that follow were meant for what comes after.
class MenuPrompt : public CTarsaGetOption {
 protected:
  bool TakeText(const CTarsaToken& token) override {
    CTarsaStandIn::CommandLine().Print(L"No menu item is " + token.word + L"; the menu closes.\n");
    m_result = nothing;
    return true;
  }
};

}  // namespace

UINT CTarsaCommandLineAnswers::ChooseMenuItem(HMENU menu, POINT, HWND) {
  MenuPrompt get;
  get.SetCommandPrompt(L"Choose from the menu");
  get.AcceptNothing(true);
  std::vector<UINT> ids;
  for (const TsMenuItem& item : TsMenuItems(menu)) {
    if (item.separator) continue;
    const std::wstring name = MenuOptionName(item.text);
    get.AddCommandOption(CTarsaCommandOptionName(name.c_str(), name.c_str()));
    ids.push_back(item.id);
  }
  if (get.GetOption() != CTarsaGet::option) return 0;
  return ids[static_cast<size_t>(get.Option()->m_option_index - 1)];
}

bool CTarsaCommandLineAnswers::AskText(const std::wstring&, const std::wstring& prompt,
                                       const std::wstring& proposed, std::wstring& text) {
  return AskProposing(prompt, proposed, text);
}

bool CTarsaCommandLineAnswers::AskYesNo(const std::wstring& question, const std::wstring&) {
  CTarsaGetOption get;
  get.AcceptNothing(true);
  const std::wstring prompt = question + L" <No>";
  get.SetCommandPrompt(prompt.c_str());
  const int yes = get.AddCommandOption(CTarsaCommandOptionName(L"Yes", L"Yes"));
  get.AddCommandOption(CTarsaCommandOptionName(L"No", L"No"));
  return get.GetOption() == CTarsaGet::option && get.Option()->m_option_index == yes;
}

bool CTarsaCommandLineAnswers::EditLabel(HWND, int, const std::wstring& current,
                                         std::wstring& text) {
  return AskProposing(L"New label", current, text);
}

CTarsaCommandLineAnswers& TarsaCommandLineAnswers() {
  static CTarsaCommandLineAnswers answers;
  return answers;
}
