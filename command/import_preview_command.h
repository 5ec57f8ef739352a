// CCommandStanceImportPreview: the StanceImportPreview command, which tells what an import of a
// model file would bring before it happens. It asks for the file, reads the file's stance table
// and its objects' placement records without touching the document or its undo, and prints one
// line per stance that would arrive: its name in the file, the name it would get here (by the
// very code the import's merge uses) and how many of the file's objects carry it. One instance
// lives as long as the module.
#pragma once

#include "host/tarsa/tarsa_command.h"

class CCommandStanceImportPreview : public CTarsaCommand {
 public:
  CCommandStanceImportPreview();
  ~CCommandStanceImportPreview() override;

  // {D7E2A915-3C48-4F6B-8A01-5B9E6C2D7F34}
  ZK_UUID CommandId() const override;
  // "StanceImportPreview"
  const wchar_t* EnglishCommandName() override;
  // Success after the preview; failure without a document or for a file that cannot be read
  // (with the host's message, as an import gives it); cancel when the prompt was cancelled or
  // answered with nothing.
  result Execute(const CTarsaCommandContext& context) override;
};
