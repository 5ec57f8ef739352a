// Undo and Redo as the user's commands: the document's last step taken back, or applied again.
// The command line records every command as an undo step, and a step cannot be taken back while
// one is being recorded; so these two first close the step begun for them, which stays empty.
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "shell/shell_command.h"

namespace {

class UndoCommand : public CTarsaShellCommand {
 public:
  UndoCommand(const wchar_t* name, const char* id, bool redo)
      : CTarsaShellCommand(name, id), m_redo(redo) {}
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaDoc* doc = context.Document();
    if (doc == nullptr) return failure;
    // Joining the open step gives its serial number; ending it twice closes it.
    const unsigned int step = doc->BeginUndoRecord(EnglishCommandName());
    while (doc->EndUndoRecord(step) && doc->UndoRecordingIsActive()) {
    }
    if (m_redo ? CTarsaStandIn::Redo(*doc) : CTarsaStandIn::Undo(*doc)) return success;
    TarsaApp().Print(m_redo ? L"Nothing to redo.\n" : L"Nothing to undo.\n");
    return nothing;
  }

 private:
  bool m_redo;
};

UndoCommand theUndoCommand(L"Undo", "7C1E0A10-0301-4B2C-9D3E-4F5A6B7C8D9E", false);
UndoCommand theRedoCommand(L"Redo", "7C1E0A10-0302-4B2C-9D3E-4F5A6B7C8D9E", true);

}  // namespace
