// CCommandKorvo: the Stance command, the plug-in's one command. Started interactively it opens
// the Stances panel. Started non-interactively (as the panel's macros start it) it removes the
// stances no object carries and loops over an option prompt whose nine options run the flows,
// until Enter or cancel; everything one run changes in the stance table is one undo step.
// One instance lives as long as the module.
#pragma once

#include "host/tarsa/tarsa_command.h"

class CCommandKorvo : public CTarsaCommand {
 public:
  CCommandKorvo();
  ~CCommandKorvo() override;

  // {CBD07E76-5DB9-4712-B014-5632BBF8DBAD}
  ZK_UUID CommandId() const override;
  // "Stance"
  const wchar_t* EnglishCommandName() override;
  // Success, cancel or failure: success after Enter at the option prompt or an interactive
  // start; cancel after a cancel there; failure without a document or for an option it cannot
  // tell.
  result Execute(const CTarsaCommandContext& context) override;
};
