// The questions the host's own commands ask on the command line: objects, three numbers typed as
// "x,y,z", one number, a name. Each asks again after an answer it cannot use, saying what it
// needs, and gives false when the user cancels.
#pragma once

#include <string>
#include <vector>

#include "host/tarsa/tarsa_object.h"

// Parses three numbers typed as "x,y,z": false for anything else (blanks, a fourth number, a
// number that is not finite).
bool TsParseOffset(const std::wstring& text, ZK_3dVector& offset);

// The objects the user picks (the document keeps them); objects selected before the question are
// the answer when `preselect` is true. Empty when the user cancelled or picked none.
std::vector<const CTarsaObject*> TsAskForObjects(const wchar_t* prompt, bool preselect = true);
// A point or a vector typed as "x,y,z".
bool TsAskForXyz(const wchar_t* prompt, ZK_3dVector& xyz);
bool TsAskForPoint(const wchar_t* prompt, ZK_3dPoint& point);
// A point, or Enter alone: 1 a point, 0 Enter, -1 cancelled.
int TsAskForNextPoint(const wchar_t* prompt, ZK_3dPoint& point);
// A finite number.
bool TsAskForNumber(const wchar_t* prompt, double& number);
// A name; Enter alone gives the empty name.
bool TsAskForName(const wchar_t* prompt, ZK_wString& name);
