// The flows of the Stance command that write placements into stances: Save makes a new stance of
// picked objects (or replaces one of the same name), Append adds picked objects to a stance,
// Update stores anew the present placement of every object of a stance. Each asks its questions
// on the command line and returns a command result, which the command does not look at.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_command.h"

// While true, Save replaces a stance of the same name without asking. The panel sets it around
// the Save macros it runs; false when the module loads.
extern bool g_bSaveWithoutConfirm;

CTarsaCommand::result DoSave(CKorvoDocData& table);
CTarsaCommand::result DoAppend(CTarsaDoc& doc, CKorvoDocData& table);
CTarsaCommand::result DoUpdate(CTarsaDoc& doc, CKorvoDocData& table);
