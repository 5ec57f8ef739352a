#include "host/tarsa/standin/tarsa_command_line.h"

#include <gtest/gtest.h>

#include <deque>

#include "host/tarsa/tarsa_get.h"
#include "host/tarsa/tarsa_localize.h"
#include "testing/host_session_test.h"

namespace {

// A command that asks for two texts and an option, and prints what it got.
class AskCommand : public CTarsaCommand {
 public:
  ZK_UUID CommandId() const override {
    return ZK_UuidFromString("1D2E3F40-5162-4738-9A4B-5C6D7E8F9012");
  }
  const wchar_t* EnglishCommandName() override { return L"Ask"; }
  const wchar_t* LocalCommandName() const override { return L"Frage"; }
  result Execute(const CTarsaCommandContext& context) override {
    interactive = context.IsInteractive();
    for (const wchar_t* prompt : {L"First", L"Second"}) {
      CTarsaGetString get;
      get.SetCommandPrompt(prompt);
      if (get.GetString() == CTarsaGet::cancel) return cancel;
      TarsaApp().Print(L"[%s]\n", get.String());
    }
    CTarsaGetOption get;
    get.AcceptNothing(true);
    get.SetCommandPrompt(L"Pick");
    get.AddCommandOption(TsLocalizeCommandOptionName(L"Left", 901));
    get.AddCommandOption(TsLocalizeCommandOptionName(L"Length", 902));
    get.AddCommandOptionList(TsLocalizeCommandOptionName(L"Mode", 903), 0,
                             CTarsaCommandOptionValue(L"Fast", nullptr),
                             CTarsaCommandOptionValue(L"Slow", nullptr));
    if (get.GetOption() == CTarsaGet::option) {
      TarsaApp().Print(L"option %d value %d\n", get.Option()->m_option_index,
                       get.Option()->m_list_option_current);
    }
    return success;
  }
  bool interactive = true;
};

// A command that asks for a text, then takes an optional side given after it.
class SideCommand : public CTarsaCommand {
 public:
  ZK_UUID CommandId() const override {
    return ZK_UuidFromString("1D2E3F40-5162-4738-9A4B-5C6D7E8F9013");
  }
  const wchar_t* EnglishCommandName() override { return L"Side"; }
  result Execute(const CTarsaCommandContext&) override {
    CTarsaGetString get;
    get.SetCommandPrompt(L"Name");
    if (get.GetString() == CTarsaGet::cancel) return cancel;
    std::wstring side = L"none";
    CTarsaStandIn::CommandLine().TakeGivenWord(L"Side:", {L"Top", L"Front"}, side);
    TarsaApp().Print(L"[%s %s]\n", get.String(), side.c_str());
    return success;
  }
};

class CommandLineTest : public HostSessionTest {
 protected:
  void SetUp() override { CTarsaStandIn::NewDocument(); }
  static CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }

  AskCommand ask_;
  SideCommand side_;
};

TEST_F(CommandLineTest, TypedLinesAnswerOnePromptAWordOrAQuotedTextEachAndPromptsTellTheirOptions) {
  const std::wstring pick = L"Pick ( Left Length Mode=Fast ): ";
  const std::wstring longer = L"Lengthy" + std::wstring(100000, L'y');
  const struct {
    std::deque<std::wstring> typed;
    std::wstring shown;
  } cases[] = {
      // Enter and the end of input are answers too.
      {{L"_ask", L"", L"_Enter"},
       L"Command: _ask\nFirst:\n[]\nSecond: _Enter\n[]\nPick ( Left Length Mode=Fast ):\n"},
      // An optional last answer is taken only when it is given already: on the same line, in any
      // letter case; not from the next line.
      {{L"Side one FRONT", L"Side two", L"top", L"Side \"three\" \"top\""},
       L"Command: Side\nName: one\nSide: FRONT\n[one Front]\n"
       L"Command: Side\nName: two\n[two none]\nCommand: top\nUnknown command: top\n"
       L"Command: Side\nName: \"three\"\n[three none]\nCommand: \"top\"\n"
       L"Unknown command: top\n"},
      {{L"-_Ask \"two words\" one", L"Le", L"len m=slow"},
       L"Command: -_Ask\nFirst: \"two words\"\n[two words]\nSecond: one\n[one]\n"
       L"Pick ( Left Length Mode=Fast ): Le\nUnknown option: Le\n"
       L"Pick ( Left Length Mode=Fast ): len\noption 2 value 0\n"
       L"Command: m=slow\nUnknown command: m=slow\n"},
      // A word longer than every option is no option.
      {{L"-_Ask a b", longer, L"Mode=" + longer, L"_Enter"},
       L"Command: -_Ask\nFirst: a\n[a]\nSecond: b\n[b]\n" + pick + longer + L"\nUnknown option: " +
           longer + L"\n" + pick + L"Mode=" + longer + L"\nUnknown option: Mode=" + longer + L"\n" +
           pick + L"_Enter\n"},
  };
  for (const auto& c : cases) {
    Type(c.typed);
    CommandLine().ProcessInput();
    EXPECT_EQ(CommandLine().TakeOutput(), c.shown);
  }
  EXPECT_FALSE(ask_.interactive);
  CommandLine().RunScript(L"_Side four Top", 0);  // a macro gives it too
  EXPECT_EQ(CommandLine().TakeOutput(), L"[four Top]\n");

  // The waiting prompt tells its options while it asks.
  std::vector<std::wstring> shown, words;
  CommandLine().SetReader([&](const std::wstring& prompt, std::wstring& line) {
    if (prompt.rfind(L"Pick", 0) == 0) {
      for (const CTarsaQuestion::Option& option : CommandLine().Question().options) {
        shown.push_back(option.shown);
        words.push_back(option.word);
      }
      line = L"_Enter";
      return true;
    }
    EXPECT_TRUE(CommandLine().Question().options.empty()) << "the text prompts offer none";
    line = prompt == L"Command:" ? L"-_Ask" : L"x";
    return prompt != L"Command:" || shown.empty();
  });
  CommandLine().ProcessInput();
  EXPECT_EQ(shown, (std::vector<std::wstring>{L"Left", L"Length", L"Mode=Fast"}));
  EXPECT_EQ(words, (std::vector<std::wstring>{L"_Left", L"_Length", L"_Mode"}));
  EXPECT_TRUE(CommandLine().Question().options.empty()) << "nothing asks any more";
  CommandLine().TakeOutput();
}

TEST_F(CommandLineTest,
       AMacroPausesForTheUserAndBangAMacroOrAnActionElsewhereCancelsTheWaitingCommand) {
  Type({L"from"});
  CommandLine().RunScript(L"frage _Pause later _Mode _Slow", 0);
  EXPECT_TRUE(ask_.interactive);
  // Only the paused prompt, answered by the user, is shown.
  EXPECT_EQ(CommandLine().TakeOutput(), L"First: from\n[from]\n[later]\noption 3 value 1\n");

  CommandLine().RunScript(L"-_Ask one !", 1);
  EXPECT_EQ(CommandLine().TakeOutput(), L"Command: -_Ask\nFirst: one\n[one]\nSecond: !\n");

  // A macro given to a waiting command cancels it and runs its own command next.
  int calls = 0;
  CommandLine().SetReader([&calls](const std::wstring&, std::wstring& line) {
    if (++calls == 1) line = L"_Ask";
    if (calls == 2) TarsaApp().RunScript(L"!-_Ask \"from the macro\" second", 0);
    return calls == 1;
  });
  CommandLine().ProcessInput();
  EXPECT_EQ(CommandLine().TakeOutput(),
            L"Command: _Ask\n[from the macro]\n[second]\n"
            L"Pick ( Left Length Mode=Fast ):\n");

  // An action elsewhere cancels the waiting command too, and runs once it ended.
  calls = 0;
  std::vector<bool> command_running;
  CommandLine().SetReader([&](const std::wstring&, std::wstring& line) {
    ++calls;
    if (calls == 2) {
      CommandLine().RunWhenNoCommand([&] {
        command_running.push_back(CommandLine().RunningCommand() != nullptr);
        TarsaApp().RunScript(L"!-_Ask \"say \"\"hi\"\"\" c _Enter", 0);
      });
    }
    // The second line was typed while the user clicked: it stays for the next prompt.
    line = calls == 1 ? L"-_Ask" : L"typed";
    return calls <= 2;
  });
  CommandLine().ProcessInput();
  EXPECT_EQ(command_running, std::vector<bool>{false});
  EXPECT_EQ(CommandLine().TakeOutput(),
            L"Command: -_Ask\nFirst:\n[say \"hi\"]\n[c]\nCommand: typed\nUnknown command: typed\n");
}
}  // namespace
