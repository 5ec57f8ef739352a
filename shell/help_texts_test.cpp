#include "shell/help_texts.h"

#include <gtest/gtest.h>

#include "shell/completion.h"
#include "testing/stance_document_test.h"

namespace {

class HelpTexts : public StanceDocumentTest {};

TEST_F(HelpTexts, EveryCommandHasHelpOfItsOwnAndStanceExplainsEveryOptionItsPromptOffers) {
  const std::wstring unknown = TsHelpSummary(L"NoSuchCommand");
  for (CTarsaCommand* command : CTarsaStandIn::Commands()) {
    const std::wstring name = command->EnglishCommandName();
    EXPECT_NE(TsHelpSummary(name), unknown) << name;
  }

  CTarsaStandIn::CommandLine().RunScript(L"-_Stance _Enter", 1);
  const std::wstring shown = CTarsaStandIn::CommandLine().TakeOutput();
  const size_t at = shown.find(L"Choose stance option");
  ASSERT_NE(at, std::wstring::npos) << shown;
  const std::vector<std::wstring> options =
      TsCompletions(shown.substr(at, shown.find(L':', at) + 1 - at), L"");
  ASSERT_EQ(options.size(), 9u) << shown;
  const std::wstring details = TsHelpDetails(L"Stance");
  for (const std::wstring& option : options) {
    EXPECT_NE(details.find(L"\n  " + option + L" "), std::wstring::npos) << option;
  }
}

}  // namespace
