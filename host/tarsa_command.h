// CTarsaCommand: the host's base class of a command, and the context a command runs in. The host
// reports every command's start and end to the event watchers.
#pragma once

class CTarsaDoc;

class CTarsaCommand {
 public:
  // How a command run ended.
  enum result { success = 0, cancel = 1, nothing = 2, failure = 3 };

  CTarsaCommand() = default;
  CTarsaCommand(const CTarsaCommand&) = delete;
  CTarsaCommand& operator=(const CTarsaCommand&) = delete;
  virtual ~CTarsaCommand() = default;
};

class CTarsaCommandContext {
 public:
  CTarsaCommandContext(CTarsaDoc* doc, bool interactive) : m_doc(doc), m_interactive(interactive) {}

  // False when the command was started with a leading "-" (from a macro or script).
  bool IsInteractive() const { return m_interactive; }
  // The document the command runs on, or null.
  CTarsaDoc* Document() const { return m_doc; }

 private:
  CTarsaDoc* m_doc;
  bool m_interactive;
};
