// CCommandStanceCheck: the StanceCheck command, which tells how far the model stands from its
// stances without moving anything. Asked for a stance (Enter: all), it prints one line per stance
// (its members, how many moved, the largest move and turn, and whether the model matches it), or
// for one stance one line per member with its state. Interactive and scripted starts behave
// alike; nothing changes, so nothing is recorded for undo. One instance lives as long as the
// module, registered after the Stance command.
#pragma once

#include "host/tarsa/tarsa_command.h"

class CCommandStanceCheck : public CTarsaCommand {
 public:
  CCommandStanceCheck();
  ~CCommandStanceCheck() override;

  // {5E0B6C2A-8F3D-4B71-9C24-3A7D1E96B058}
  ZK_UUID CommandId() const override;
  // "StanceCheck"
  const wchar_t* EnglishCommandName() override;
  // Success after a report, also for an unknown name; cancel when the prompt was cancelled;
  // failure without a document.
  result Execute(const CTarsaCommandContext& context) override;
};
