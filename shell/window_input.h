// TsWindowInput: what a person does in the program's window, as the command line sees it. The
// widgets only report what happened (a line entered, an option clicked, Escape, objects picked in
// the view, a right click, an action on a panel or a menu command, the window closed); each is
// queued, and Read, the command line's reader, takes them one at a time while it waits. Nothing
// the host does runs inside a widget's event handler, so whatever the user does, in any order,
// while any prompt waits, the command line goes on taking lines:
// - a line or an option answers the prompt, and is shown after it;
// - Escape cancels the prompt of a running command; at "Command:" it does nothing;
// - picks answer a prompt that takes objects, one answer each, until Enter or a right click ends
//   the picking; at any other prompt they select the objects;
// - a panel action or a menu command runs at once at "Command:"; while a command waits, that
//   command is cancelled first and the action runs once it has ended;
// - closing the window runs Exit, which asks about unsaved changes.
// It knows no widget: the window gives it a way to wait for events and to show the prompt.
// Owned by the window's front end.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/zefkit/zk_uuid.h"

class TsWindowInput {
 public:
  struct Hooks {
    // Runs the window's events until at least one has been handled.
    std::function<void()> wait;
    // Shows `prompt` as the one that waits, with the options it offers, and everything the host
    // may have changed (model, panels, title).
    std::function<void(const std::wstring& prompt)> show;
    // Adds text to the command line's output.
    std::function<void(const std::wstring& text)> write;
  };

  explicit TsWindowInput(Hooks hooks) : m_hooks(std::move(hooks)) {}

  void Enter(const std::wstring& line);
  // An option of the prompt `prompt` clicked: `word` picks it, `shown` is its label.
  void Choose(const std::wstring& prompt, const std::wstring& word, const std::wstring& shown);
  void Escape();
  // Objects picked in the view (none: a click on nothing); `add` when Shift or Ctrl was held.
  void Pick(const std::vector<ZK_UUID>& objects, bool add);
  void EndPicking();
  // An action on a panel or a menu command: what the host is to do, run by Read.
  void Act(std::function<void()> action);
  void Close();

  // The command line's reader: true with the line the user gave at `prompt`; false when the input
  // ended (Exit) or an action cancels the command that waits.
  bool Read(const std::wstring& prompt, std::wstring& line);
  // The prompt that waits now, empty when none does.
  const std::wstring& Waiting() const { return m_waiting; }
  // Whether nothing the user did waits to be taken.
  bool Idle() const { return m_events.empty(); }

 private:
  enum class Kind { line, escape, pick, end_picking, action };
  struct Event {
    Kind kind;
    std::wstring line;    // what answers the prompt
    std::wstring shown;   // how the answer is shown after the prompt
    std::wstring prompt;  // an option's prompt; empty for any prompt
    std::vector<ZK_UUID> objects;
    bool add = false;
    std::function<void()> action;
  };
  // What `event` answers at `prompt`: true with the line to give; false when it answers nothing
  // there (it may have acted meanwhile).
  bool Answer(Event& event, const std::wstring& prompt, std::wstring& line);
  void Select(const std::vector<ZK_UUID>& objects, bool add);

  Hooks m_hooks;
  std::deque<Event> m_events;
  std::wstring m_waiting;
};
