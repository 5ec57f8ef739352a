// CTarsaCommandLine: the host's command line. It reads what the user types (through a reader the
// host program or a test provides) and the words of macros, runs the commands they name, answers
// the prompts of running commands, and collects everything shown on the command line: prompts
// with their answers, and what commands print. One instance, owned by the application.
//
// Input is a stream of words and quoted texts ("two words" is one answer; two double quotes
// inside a quoted text stand for one: "Side"" Front" is Side" Front). "_Enter" or an empty
// line is Enter, "_Escape" or the end of input is cancel. In macros, "!" cancels the running
// command, "-" before a command name starts it non-interactively, "_" marks an English name, and
// "_Pause" hands the prompt then shown to the user until its question ends: a text prompt takes
// one answer, an object prompt the picks up to the Enter that ends them. A pause meant for an
// object prompt that objects selected beforehand answered is passed over.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/tarsa/tarsa_command.h"

// One answer of command-line input.
struct CTarsaToken {
  enum Kind { text, enter, escape, pause, abort };
  Kind kind = text;
  std::wstring word;    // the text, without quotes
  bool quoted = false;  // a quoted text: always a string, never an option or command name
  bool echo = true;     // shown on the command line when used
  std::wstring typed;   // as it was typed, for the echo
};

// Splits input into answers. A word that starts with "!" gives an abort, then the rest.
std::vector<CTarsaToken> TsTokenize(const std::wstring& text, bool echo);

// What the prompt being asked offers besides typing, for a front end that shows it: the options
// shown, each with its label as the prompt shows it and the word that picks it, whether objects
// may be picked (by their ids), and the objects picked so far.
struct CTarsaQuestion {
  struct Option {
    std::wstring shown;
    std::wstring word;
  };
  std::vector<Option> options;
  bool objects = false;
  std::vector<ZK_UUID> picked;  // what an object prompt has picked so far
};

class CTarsaCommandLine {
 public:
  // Gives the next line the user types, having shown `prompt`; false at the end of input, or when
  // the user did something else instead (ran a macro, acted on a panel) while being asked.
  using Reader = std::function<bool(const std::wstring& prompt, std::wstring& line)>;
  // Shows text as it is printed.
  using Writer = std::function<void(const std::wstring& text)>;

  void SetReader(Reader reader) { m_reader = std::move(reader); }
  void SetWriter(Writer writer) { m_writer = std::move(writer); }
  // Whether what the user types is shown again with its prompt when it is used (the default). A
  // terminal, which shows the typing itself, turns this off; a script's transcript keeps it.
  void SetEchoUserInput(bool echo) { m_echo_user_input = echo; }

  // Drops the reader, the writer, pending input and output: the command line as it started.
  void Reset();

  // Shows text on the command line.
  void Print(const std::wstring& text);
  // Everything shown since the last call, and forgets it.
  std::wstring TakeOutput();

  // The answer to a prompt. `prompt` is shown with the answer when the answer is echoed.
  CTarsaToken Ask(const std::wstring& prompt);
  // An optional last answer: the next word already given (the macro's next, or the next on the
  // line the user typed), when it is one of `words` in any letter case. Then it is taken, shown
  // with `prompt` as an answer is, and `word` is set to the one of `words` it matched; otherwise
  // nothing is taken and no line is read.
  bool TakeGivenWord(const std::wstring& prompt, const std::vector<std::wstring>& words,
                     std::wstring& word);

  // Runs the command `typed` names ("-" before the name: non-interactively; "_": an English
  // name) on the active document, as one undo step. Failure for an unknown command.
  CTarsaCommand::result RunCommand(const std::wstring& typed);
  // Runs a macro as if typed. While a command runs, its words answer that command's prompts;
  // otherwise the commands it names run now. Echo 1 shows the macro's words, 0 does not, unless
  // a front end asked to see those too (ShowQuietMacros).
  void RunScript(const wchar_t* macro, int echo);
  // Shows each macro run with echo 0 as one line "Command: MACRO" through `writer` before it
  // runs, so that a person sees what a panel or menu did; null shows them no more.
  void ShowQuietMacros(Writer writer) { m_quiet_macros = std::move(writer); }
  // Reads the user's input and runs the commands it names, until the input ends.
  void ProcessInput();
  // Runs what the user does outside the command line (an action on a panel): now when no command
  // runs; else the running command is cancelled and `action` runs once it has ended.
  void RunWhenNoCommand(std::function<void()> action);
  // Ends the input: the words and panel actions not yet used are dropped and nothing more is
  // read, so that ProcessInput returns when the running command ends. Reset() reads again.
  void EndInput();
  bool InputEnded() const { return m_input_ended; }
  // How many commands that ProcessInput or RunScript started ended with failure, unknown
  // commands included, since Reset().
  int FailedCommandCount() const { return m_failed_commands; }

  // The question of the prompt being asked now: no options and no objects when none asks. A
  // prompt sets it for the time it asks (SetQuestion gives back the one before, to restore).
  const CTarsaQuestion& Question() const { return m_question; }
  CTarsaQuestion SetQuestion(CTarsaQuestion question) {
    std::swap(question, m_question);
    return question;
  }
  // A prompt's question begins and ends around all the answers it takes: a macro's pause lasts
  // until the question it paused ends.
  void BeginQuestion() { ++m_question_depth; }
  void EndQuestion();
  // Drops a "_Pause" that the macro gives next: objects selected beforehand answered the object
  // prompt it was meant for.
  void PassOverPause();

  // The command that is running, or null.
  const CTarsaCommand* RunningCommand() const { return m_running; }
  // The document of the running command, else the active document; may be null.
  CTarsaDoc* Document() const;

 private:
  // The macro's next word; false when there is none, or when it is "_Pause" (taken), which hands
  // the prompt to the user.
  bool TakeMacroToken(CTarsaToken& token);
  // The answer to a prompt from the macro, unless a pause hands the question to the user.
  bool TakeMacroAnswer(CTarsaToken& token);
  // The user's next word, reading a line when none is left; false when the reader has none.
  bool NextUserToken(const std::wstring& prompt, CTarsaToken& token);
  void RunTopLevel(const CTarsaToken& token);

  Reader m_reader;
  Writer m_writer;
  Writer m_quiet_macros;
  std::wstring m_output;
  std::deque<CTarsaToken> m_macro;
  std::deque<CTarsaToken> m_user;
  std::deque<std::function<void()>> m_after_command;
  CTarsaQuestion m_question;
  CTarsaCommand* m_running = nullptr;
  CTarsaDoc* m_running_doc = nullptr;
  bool m_abort = false;
  int m_question_depth = 0;
  int m_paused_depth = 0;  // the question the user answers for a macro's pause; 0: none
  bool m_echo_user_input = true;
  bool m_input_ended = false;
  int m_failed_commands = 0;
};
