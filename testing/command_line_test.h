// A fixture for scenarios typed at the host's command line: the user's lines go in, and what the
// command line showed comes back line by line, as a person reads it.
#pragma once

#include <deque>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

class CommandLineTest : public StanceDocumentTest {
 protected:
  static CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }
  // Feeds the user's lines to the command line and runs `typed`; what was shown, line by line.
  std::vector<std::wstring> Run(const std::wstring& typed, std::deque<std::wstring> lines = {}) {
    Type(std::move(lines));
    result_ = CommandLine().RunCommand(typed);
    return SplitLines(CommandLine().TakeOutput());
  }
  // Runs a command that asks one question, answered with `answer`: what it showed after the
  // prompt and its answer.
  std::vector<std::wstring> Answered(const std::wstring& typed, const std::wstring& answer) {
    std::vector<std::wstring> shown = Run(typed, {answer});
    shown.erase(shown.begin());
    return shown;
  }
  static std::vector<std::wstring> SplitLines(const std::wstring& text) {
    std::vector<std::wstring> lines;
    std::wistringstream in(text);
    for (std::wstring line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  using TextsById = std::map<int, std::set<std::wstring>>;
  // The English texts the host was asked to localise while `action` ran, by string id.
  template <class Action>
  static TextsById TextsAsked(Action&& action) {
    TextsById asked;
    CTarsaStandIn::SetLocalizationObserver([&asked](const wchar_t* english, int id) {
      if (id != 0) asked[id].insert(english);
    });
    action();
    CTarsaStandIn::SetLocalizationObserver(nullptr);
    return asked;
  }

  CTarsaCommand::result result_ = CTarsaCommand::nothing;
};
