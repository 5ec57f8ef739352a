// The host program's commands that show the model and the program:
//   List             every object, one line each (shell/object_listing.h).
//   What             the picked objects, one line each, then their points.
//   Picture FILE [Top|Front|Right|Iso]  the model seen from that side (Iso when none is given)
//                    as SVG (shell/model_scene.h).
//   PlugIns          the loaded plug-ins: name, version, module file and developer.
//   Help [NAME]      the commands, or what one of them does.
#include <algorithm>
#include <cwctype>

#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_prompts.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_get.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/help_texts.h"
#include "shell/model_scene.h"
#include "shell/object_listing.h"
#include "shell/shell_command.h"

namespace {

void Print(const std::wstring& text) { TarsaApp().Print(L"%s", text.c_str()); }

class ListCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    if (context.Document() == nullptr) return failure;
    const std::vector<const CTarsaObject*> objects = TsEveryObject(*context.Document());
    if (objects.empty()) {
      Print(L"The model is empty.\n");
    } else {
      Print(TsListObjects(objects));
    }
    return success;
  }
};

class WhatCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    if (context.Document() == nullptr) return failure;
    const std::vector<const CTarsaObject*> objects = TsAskForObjects(L"Select objects");
    if (objects.empty()) return cancel;
    Print(TsListObjects(objects));
    for (const CTarsaObject* object : objects) {
      const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object->Geometry());
      if (shape == nullptr || shape->Points().size() < 2) continue;
      std::wstring line = L"  " + std::wstring(object->Attributes().m_name.Text()) + L" points:";
      for (const ZK_3dPoint& p : shape->Points()) line += L" " + TsFormatPoint(p);
      Print(line + L"\n");
    }
    return success;
  }
};

class PictureCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    std::wstring typed;
    if (context.Document() == nullptr) return failure;
    if (!TsAskForText(L"File for the picture", typed)) return cancel;
    // The side it is seen from, when given on the same line.
    std::wstring side;
    TsStandardView view = TsStandardView::iso;
    if (CTarsaStandIn::CommandLine().TakeGivenWord(L"View:", TsViewNames(), side)) {
      TsViewNamed(side, view);
    }
    std::string path = ZK_wString(typed).ToUtf8();
    if (path.find('.', path.find_last_of('/') + 1) == std::string::npos) path += ".svg";
    std::wstring error;
    if (!TsWritePictureSvg(*context.Document(), view, path, error)) {
      Print(error + L"\n");
      return failure;
    }
    std::wstring name = TsViewName(view);
    name[0] = static_cast<wchar_t>(std::towlower(name[0]));
    Print(L"Wrote the " + name + L" view to " + ZK_wString::FromUtf8(path).Text() + L".\n");
    return success;
  }
};

class PlugInsCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext&) override {
    if (CTarsaStandIn::PlugIns().empty()) Print(L"No plug-in is loaded.\n");
    for (const CTarsaPlugIn* plug_in : CTarsaStandIn::PlugIns()) {
      Print(std::wstring(plug_in->PlugInName()) + L", version " + plug_in->PlugInVersion() + L"\n");
      const std::string path = CTarsaPlugInLoader::Path(*plug_in);
      if (!path.empty()) Print(L"  file: " + ZK_wString::FromUtf8(path).Text() + L"\n");
      if (const CTarsaPlugInLoader::DeveloperInfo* developer =
              CTarsaPlugInLoader::Developer(*plug_in)) {
        Print(L"  from: " + developer->m_organization + L", " + developer->m_website + L"\n");
      }
    }
    return success;
  }
};

// The plug-in that made a command, or null for the host's own.
const CTarsaPlugIn* PlugInOf(const CTarsaCommand* command) {
  for (const CTarsaPlugIn* plug_in : CTarsaStandIn::PlugIns()) {
    const std::vector<CTarsaCommand*> made = CTarsaPlugInLoader::Commands(*plug_in);
    if (std::find(made.begin(), made.end(), command) != made.end()) return plug_in;
  }
  return nullptr;
}

class HelpCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext&) override {
    CTarsaGetString get;
    get.SetCommandPrompt(L"Command to explain <all>");
    get.AcceptNothing(true);
    const CTarsaGet::result answer = get.GetString();
    if (answer == CTarsaGet::cancel) return cancel;
    if (answer != CTarsaGet::string || *get.String() == 0) {
      ListAll();
      return success;
    }
    return Explain(get.String());
  }

 private:
  static void ListAll() {
    std::vector<std::wstring> names;
    for (CTarsaCommand* command : CTarsaStandIn::Commands()) {
      names.push_back(command->EnglishCommandName());
    }
    std::sort(names.begin(), names.end());
    Print(L"Commands (Help NAME explains one):\n");
    for (const std::wstring& name : names)
      Print(L"  " + name + L"  " + TsHelpSummary(name) + L"\n");
  }

  static result Explain(const std::wstring& name) {
    const CTarsaCommand* command = CTarsaCommand::Find(name.c_str(), false);
    if (command == nullptr) {
      Print(L"There is no command " + name + L". Help lists the commands.\n");
      return failure;
    }
    const std::wstring english = const_cast<CTarsaCommand*>(command)->EnglishCommandName();
    if (const CTarsaPlugIn* plug_in = PlugInOf(command)) {
      Print(english + L": a command of the plug-in " + plug_in->PlugInName() + L". Started as " +
            english + L" it works as the plug-in shows it; started as -" + english +
            L" it asks for its options on the command line.\n" + TsHelpDetails(english));
      return success;
    }
    Print(english + L": " + TsHelpSummary(english) + L"\n" + TsHelpDetails(english));
    return success;
  }
};

ListCommand theListCommand(L"List", "7C1E0A10-0101-4B2C-9D3E-4F5A6B7C8D9E");
WhatCommand theWhatCommand(L"What", "7C1E0A10-0102-4B2C-9D3E-4F5A6B7C8D9E");
PictureCommand thePictureCommand(L"Picture", "7C1E0A10-0103-4B2C-9D3E-4F5A6B7C8D9E");
PlugInsCommand thePlugInsCommand(L"PlugIns", "7C1E0A10-0104-4B2C-9D3E-4F5A6B7C8D9E");
HelpCommand theHelpCommand(L"Help", "7C1E0A10-0105-4B2C-9D3E-4F5A6B7C8D9E");

}  // namespace
