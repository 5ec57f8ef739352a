// CTarsaShellCommand: the base of the host program's own commands (files, help, listings,
// pictures, the host's stance access). Each has an English name and an id, and runs on the
// session's document. The command objects are static objects of the program.
#pragma once

#include "host/tarsa/tarsa_command.h"
#include "host/zefkit/zk_uuid.h"

class CTarsaShellCommand : public CTarsaCommand {
 public:
  CTarsaShellCommand(const wchar_t* name, const char* id)
      : m_name(name), m_id(ZK_UuidFromString(id)) {}
  ZK_UUID CommandId() const override { return m_id; }
  const wchar_t* EnglishCommandName() override { return m_name; }

 private:
  const wchar_t* m_name;
  ZK_UUID m_id;
};

// The text the user answers to `prompt`, as typed; false when the user cancelled or gave
// nothing.
bool TsAskForText(const wchar_t* prompt, std::wstring& text);
