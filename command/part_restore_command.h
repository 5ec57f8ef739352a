// CCommandStanceRestoreObjects: the StanceRestoreObjects command, the restore of part of a
// stance. It asks for a stance, then for objects (objects selected beforehand are taken): only
// the picked members of the stance move back to their saved placements, and picked objects that
// are not members are named in one line. The host keeps the moves as one undo step, like any
// command's. One instance lives as long as the module.
#pragma once

#include "host/tarsa/tarsa_command.h"

class CCommandStanceRestoreObjects : public CTarsaCommand {
 public:
  CCommandStanceRestoreObjects();
  ~CCommandStanceRestoreObjects() override;

  // {A3C1F4E2-6B0D-4E8A-B5F7-2D9C8E1A4B63}
  ZK_UUID CommandId() const override;
  // "StanceRestoreObjects"
  const wchar_t* EnglishCommandName() override;
  // Success after the restore, also for an unknown or empty name; cancel when a prompt was
  // cancelled or no object was picked; failure without a document.
  result Execute(const CTarsaCommandContext& context) override;
};
