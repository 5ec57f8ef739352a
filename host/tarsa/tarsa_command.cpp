#include "host/tarsa/tarsa_command.h"

#include <algorithm>
#include <vector>

#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"

namespace {

std::vector<CTarsaCommand*>& Commands() {
  static std::vector<CTarsaCommand*> commands;
  return commands;
}

}  // namespace

CTarsaCommand::CTarsaCommand(bool, bool, const CTarsaPlugIn* plug_in, bool) : m_plug_in(plug_in) {
  Commands().push_back(this);
  if (m_plug_in == nullptr) CTarsaPlugInLoader::NoteConstructed(*this);
}

CTarsaCommand::~CTarsaCommand() {
  auto& commands = Commands();
  commands.erase(std::remove(commands.begin(), commands.end(), this), commands.end());
}

const wchar_t* CTarsaCommand::EnglishCommandName() const {
  return const_cast<CTarsaCommand*>(this)->EnglishCommandName();
}

const wchar_t* CTarsaCommand::LocalCommandName() const { return EnglishCommandName(); }

bool CTarsaCommand::ReplayHistory(const CTarsaHistoryRecord&) { return false; }

bool CTarsaCommand::ReplayHistory(const CTarsaHistoryRecord&, const CTarsaObjRef*, int) {
  return false;
}

bool CTarsaCommand::EditObjects(const CTarsaObjRef*, int) { return false; }

void CTarsaCommand::LoadProfile(const wchar_t*, CTarsaProfileContext&) {}

void CTarsaCommand::SaveProfile(const wchar_t*, CTarsaProfileContext&) {}

void CTarsaCommand::DoHelp() {}

void CTarsaCommand::DynamicDraw() {}

const wchar_t* CTarsaCommand::ContextHelpURL() const { return L""; }

CTarsaCommand* CTarsaCommand::Find(const wchar_t* name, bool english) {
  if (name == nullptr || *name == 0) return nullptr;
  const ZK_wString wanted(name);
  for (bool use_english : {english, true}) {
    for (CTarsaCommand* command : Commands()) {
      const wchar_t* candidate =
          use_english ? command->EnglishCommandName() : command->LocalCommandName();
      if (wanted.CompareNoCase(candidate) == 0) return command;
    }
  }
  return nullptr;
}

std::vector<CTarsaCommand*> CTarsaStandIn::Commands() { return ::Commands(); }
