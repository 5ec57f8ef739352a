// What Tab completes on a terminal: at the "Command:" prompt the names of the commands; at a
// command's prompt the names of the options it shows ("Prompt ( List Save Visible=Yes ):" offers
// List, Save and Visible). A leading "-", "_" or "!" of the word is kept. Where the Stance
// command asks for the name of a stance ("Name for position to restore", in the user's language)
// it offers the names of the stances of the document the commands work on, a name that holds a
// blank quoted as the command line takes it back ("two words").
#pragma once

#include <string>
#include <vector>

// The words that complete `word` at `prompt`, in sorted order, letter case ignored in matching.
std::vector<std::wstring> TsCompletions(const std::wstring& prompt, const std::wstring& word);
