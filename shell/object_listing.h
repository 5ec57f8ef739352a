// How the host program describes objects to a person: one line each, with the name, kind, state,
// selection, construction history, where the object is and its id, in aligned columns. List and
// What print these lines.
#pragma once

#include <string>
#include <vector>

#include "host/tarsa/tarsa_object.h"

// A number as the program shows it: at most three decimals, no trailing zeros, never "-0".
std::wstring TsFormatNumber(double value);
// Points as "x,y,z".
std::wstring TsFormatPoint(const ZK_3dPoint& point);

// The lines describing `objects`, one each, in the order given, each ending in "\n".
std::wstring TsListObjects(const std::vector<const CTarsaObject*>& objects);

// Every undeleted object of the active model and of attached files, lights and hidden objects
// included, in the document's order.
std::vector<const CTarsaObject*> TsEveryObject(CTarsaDoc& doc);
