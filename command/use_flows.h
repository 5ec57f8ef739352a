// The flows of the Stance command that use stances without capturing placements: Restore moves
// a stance's objects back, Select selects them, Delete and Rename change the table, List prints
// the names, and Visible shows, hides or toggles the Stances panel. Each asks its questions on
// the command line and returns a command result (never failure), which the command does not
// look at.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_command.h"

CTarsaCommand::result DoRestore(CTarsaDoc& doc, CKorvoDocData& table);
CTarsaCommand::result DoSelect(CTarsaDoc& doc, CKorvoDocData& table);
CTarsaCommand::result DoDelete(CKorvoDocData& table);
CTarsaCommand::result DoRename(CKorvoDocData& table);
CTarsaCommand::result DoList(CKorvoDocData& table);
CTarsaCommand::result DoVisible();
