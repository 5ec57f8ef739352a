// CTarsaCommand: the host's base class of a command. A command object registers itself with the
// host when it is made (plug-ins make theirs as static objects of their module) and withdraws
// when it is destroyed. The host finds commands by English or local name, ignoring letter case,
// and runs them on the command line (CTarsaCommandLine).
#pragma once

#include "host/zefkit/zk_uuid.h"

class CTarsaDoc;
class CTarsaHistoryRecord;
class CTarsaObjRef;
class CTarsaPlugIn;
class CTarsaProfileContext;

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

class CTarsaCommand {
 public:
  // How a command run ended.
  enum result { success = 0, cancel = 1, nothing = 2, failure = 3 };

  // `plug_in` names the plug-in that provides the command (null: the one being loaded).
  CTarsaCommand(bool transparent = false, bool do_not_repeat = false,
                const CTarsaPlugIn* plug_in = nullptr, bool test_command = false);
  CTarsaCommand(const CTarsaCommand&) = delete;
  CTarsaCommand& operator=(const CTarsaCommand&) = delete;
  virtual ~CTarsaCommand();

  virtual ZK_UUID CommandId() const = 0;
  // The const form asks the other one.
  virtual const wchar_t* EnglishCommandName() const;
  virtual const wchar_t* EnglishCommandName() = 0;
  // The name in the user's language; the English name unless a command says otherwise.
  virtual const wchar_t* LocalCommandName() const;
  virtual result Execute(const CTarsaCommandContext& context) = 0;
  virtual bool ReplayHistory(const CTarsaHistoryRecord& record);
  virtual bool ReplayHistory(const CTarsaHistoryRecord& record, const CTarsaObjRef* pairs,
                             int count);
  virtual bool EditObjects(const CTarsaObjRef* objects, int count);
  virtual void LoadProfile(const wchar_t* section, CTarsaProfileContext& profile);
  virtual void SaveProfile(const wchar_t* section, CTarsaProfileContext& profile);
  virtual void DoHelp();
  virtual void DynamicDraw();
  virtual const wchar_t* ContextHelpURL() const;

  // The registered command with that name, or null. `english` picks the English names; otherwise
  // local names are tried first, then English ones.
  static CTarsaCommand* Find(const wchar_t* name, bool english);

 private:
  friend class CTarsaPlugInLoader;
  const CTarsaPlugIn* m_plug_in;
};
