// The host program's file commands:
//   New, Open FILE   replace the model by an empty one or by a model file.
//   Save, SaveAs FILE   write the model (Save asks for a file when the model has none).
//   Import FILE, Attach FILE   merge a model file into the model, or attach it as reference
//                    objects.
//   RunScript FILE   run the command lines of a script file.
//   Exit             end the program.
// New, Open and Exit ask what to do with unsaved changes (save, discard or cancel) before they
// drop them, unless started as -New, -Open, -Exit.
// File names without an extension get ".tsm".
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_get.h"
#include "shell/script_input.h"
#include "shell/session.h"
#include "shell/shell_command.h"

bool TsAskForText(const wchar_t* prompt, std::wstring& text) {
  CTarsaGetString get;
  get.SetCommandPrompt(prompt);
  get.AcceptNothing(true);
  if (get.GetString() != CTarsaGet::string || *get.String() == 0) return false;
  text = get.String();
  return true;
}

namespace {

CTarsaApp& App() { return TarsaApp(); }

class NewCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    if (!TarsaSession().MayDropChanges(context.IsInteractive())) return cancel;
    TarsaSession().NewDocument();
    return success;
  }
};

class OpenCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    std::wstring typed;
    if (!TsAskForText(L"File to open", typed)) return cancel;
    const std::string path = TsModelFileName(typed);
    // A file that cannot be a model is reported before the user is asked to drop anything.
    std::wstring error;
    if (!TsIsModelFile(path, error)) {
      App().Print(L"%s\n", error.c_str());
      return failure;
    }
    if (!TarsaSession().MayDropChanges(context.IsInteractive())) return cancel;
    if (!TarsaSession().OpenDocument(path, error)) {
      App().Print(L"%s\n", error.c_str());
      return failure;
    }
    App().Print(L"Opened %s.\n", TarsaSession().DisplayName().c_str());
    return success;
  }
};

class SaveCommand : public CTarsaShellCommand {
 public:
  SaveCommand(const wchar_t* name, const char* id, bool ask_always)
      : CTarsaShellCommand(name, id), m_ask_always(ask_always) {}
  result Execute(const CTarsaCommandContext&) override { return TsSaveModel(m_ask_always); }

 private:
  bool m_ask_always;
};

// Import and Attach.
class MergeCommand : public CTarsaShellCommand {
 public:
  MergeCommand(const wchar_t* name, const char* id, bool reference)
      : CTarsaShellCommand(name, id), m_reference(reference) {}
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaDoc* doc = context.Document();
    std::wstring typed;
    if (doc == nullptr) return failure;
    if (!TsAskForText(m_reference ? L"File to attach" : L"File to import", typed)) return cancel;
    std::wstring error;
    if (!TsReadModelFile(*doc, TsModelFileName(typed), true, m_reference, error)) {
      App().Print(L"%s\n", error.c_str());
      return failure;
    }
    return success;
  }

 private:
  bool m_reference;
};

class RunScriptCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext&) override {
    std::wstring typed;
    if (!TsAskForText(L"Script file", typed)) return cancel;
    std::wstring error;
    if (!TarsaScriptInput().PushScriptFile(ZK_wString(typed).ToUtf8(), error)) {
      App().Print(L"%s\n", error.c_str());
      return failure;
    }
    return success;
  }
};

class ExitCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    if (!TarsaSession().MayDropChanges(context.IsInteractive())) return cancel;
    CTarsaStandIn::CommandLine().EndInput();
    return success;
  }
};

NewCommand theNewCommand(L"New", "7C1E0A10-0001-4B2C-9D3E-4F5A6B7C8D9E");
OpenCommand theOpenCommand(L"Open", "7C1E0A10-0002-4B2C-9D3E-4F5A6B7C8D9E");
SaveCommand theSaveCommand(L"Save", "7C1E0A10-0003-4B2C-9D3E-4F5A6B7C8D9E", false);
SaveCommand theSaveAsCommand(L"SaveAs", "7C1E0A10-0004-4B2C-9D3E-4F5A6B7C8D9E", true);
MergeCommand theImportCommand(L"Import", "7C1E0A10-0005-4B2C-9D3E-4F5A6B7C8D9E", false);
MergeCommand theAttachCommand(L"Attach", "7C1E0A10-0006-4B2C-9D3E-4F5A6B7C8D9E", true);
RunScriptCommand theRunScriptCommand(L"RunScript", "7C1E0A10-0007-4B2C-9D3E-4F5A6B7C8D9E");
ExitCommand theExitCommand(L"Exit", "7C1E0A10-0008-4B2C-9D3E-4F5A6B7C8D9E");

}  // namespace
