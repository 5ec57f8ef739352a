// The host's own use of stances, through the interface the stance plug-in hands it at load:
//   ListStances          each stance of the model: id, name, number of objects.
//   RestoreStanceById ID the stance with that id restored.
// Both fail, saying so, when no plug-in has handed the interface over.
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"
#include "shell/shell_command.h"

namespace {

ITsStanceDynamicAccess* Access() {
  ITsStanceDynamicAccess* access = CTarsaStandIn::StanceDynamicAccess();
  if (access == nullptr) TarsaApp().Print(L"No plug-in gives the host access to stances.\n");
  return access;
}

class ListStancesCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    ITsStanceDynamicAccess* access = Access();
    CTarsaDoc* doc = context.Document();
    if (access == nullptr || doc == nullptr) return failure;
    ZK_SimpleArray<ZK_UUID> ids;
    access->GetStanceIds(*doc, ids);
    if (ids.Count() == 0) TarsaApp().Print(L"The model has no stances.\n");
    for (int i = 0; i < ids.Count(); ++i) {
      ZK_wString name;
      ZK_SimpleArray<const CTarsaObject*> objects;
      access->GetStanceName(*doc, ids[i], name);
      access->GetStanceObjects(*doc, ids[i], objects);
      TarsaApp().Print(L"%s  \"%s\"  %d %s\n", ZK_UuidToString(ids[i]).Array(), name.Array(),
                       objects.Count(), objects.Count() == 1 ? L"object" : L"objects");
    }
    return success;
  }
};

class RestoreStanceByIdCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    ITsStanceDynamicAccess* access = Access();
    CTarsaDoc* doc = context.Document();
    std::wstring typed;
    if (access == nullptr || doc == nullptr) return failure;
    if (!TsAskForText(L"Id of the stance to restore", typed)) return cancel;
    const ZK_UUID id = ZK_UuidFromString(typed.c_str());
    if (ZK_UuidIsNil(id) || !access->RestoreStance(*doc, id)) {
      TarsaApp().Print(L"No stance has the id %s.\n", typed.c_str());
      return failure;
    }
    return success;
  }
};

ListStancesCommand theListStancesCommand(L"ListStances", "7C1E0A10-0201-4B2C-9D3E-4F5A6B7C8D9E");
RestoreStanceByIdCommand theRestoreStanceByIdCommand(L"RestoreStanceById",
                                                     "7C1E0A10-0202-4B2C-9D3E-4F5A6B7C8D9E");

}  // namespace
