// Small pieces the Stance command's flows share: asking for a name, finding a stance by a typed
// name with the table's own enumeration, asking for objects, printing a localised message.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_get.h"
#include "host/zefkit/zk_array.h"

// Asks for a text with `prompt`, accepting Enter alone when `accept_nothing`. Gives the prompt's
// result; `text` receives what was entered (empty for anything but a string).
CTarsaGet::result AskForText(const wchar_t* prompt, bool accept_nothing, ZK_wString& text);

// The first stance whose name matches `name` ignoring case, found by walking the table with its
// own cursor; null when there is none.
CKorvoDocData::USER_DATA* ScanForName(CKorvoDocData& table, const wchar_t* name);

// Asks for the name of a stored position with the formatted prompt, as Restore and Update do:
// true with the stance found. False with the flow's result in `result`: cancel for a cancel,
// success for an empty name or a name no stance has (which is reported).
bool AskForStoredPosition(const wchar_t* english, int string_id, CKorvoDocData& table,
                          const CKorvoDocData::USER_DATA*& stance, CTarsaCommand::result& result);

// Prints that no stance has the name, as typed.
void PrintNoStoredPosition(const wchar_t* name);
// The same in the words of the plug-in's further commands: "Stance <NAME> does not exist."
void PrintNoStance(const wchar_t* name);

// The name a person knows an object by: its name, or its id when it has none.
ZK_wString ObjectName(const CTarsaObject& object);

// Asks for at least one object, pre-selected objects accepted: true when objects were picked.
bool AskForObjects(ZK_SimpleArray<const CTarsaObject*>& objects);

// Prints the localised text as a format, with `name` for its "%s".
void PrintMessage(const wchar_t* english, int string_id, const wchar_t* name = nullptr);

// The localised text passed through ZK_wString::Format without arguments.
ZK_wString FormattedPrompt(const wchar_t* english, int string_id);
