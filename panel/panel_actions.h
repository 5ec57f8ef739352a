// The texts of the Stances panel's actions: the quoting of a stance name in a command macro, the
// macros that carry out the actions through the Stance command, and the name the save dialog
// proposes for a new stance.
#pragma once

#include <string>

class CTarsaDoc;

// Empty text for an empty name; else the name in double quotes, with every double quote inside
// it written twice, which the host's command line reads back as one.
std::wstring QuoteName(const wchar_t* name);

// A macro that runs `command` non-interactively with its option `option` and the quoted name:
// ending the command with Enter ("!-_%s _%s %s _ENTER"), or first handing the object prompt to
// the user ("!-_%s _%s %s _PAUSE _ENTER").
std::wstring NameMacro(const wchar_t* command, const wchar_t* option, const std::wstring& quoted);
std::wstring PausingNameMacro(const wchar_t* command, const wchar_t* option,
                              const std::wstring& quoted);
// A macro that runs `command` non-interactively with the quoted name as its first answer and
// leaves the prompts after it to the user ("!-_%s %s").
std::wstring CommandMacro(const wchar_t* command, const std::wstring& quoted);
// The macro of an action of the panel's base: a Save (matched ignoring letter case) pauses at the
// object prompt, then gives the second name when there is one; any other option gives both
// quoted names, an empty one leaving its blank in place.
std::wstring StandardActionMacro(const wchar_t* command, const wchar_t* option,
                                 const std::wstring& quoted_first,
                                 const std::wstring& quoted_second);
// Whether an option word is Save, whose macro runs with echo and without the command's own
// replace question.
bool IsSaveOption(const wchar_t* option);

// The first "Position %02d" name (localised, id 28191), counting from 1, that no stance of the
// document has, letter case ignored.
std::wstring NewStanceName(CTarsaDoc& doc);
