// How the program loads the stance plug-in: the module file Korvo.tsp beside the program, or
// another module file, through the host's plug-in loader.
#pragma once

#include <string>

class CTarsaPlugIn;

// The module file beside the program.
std::string TsDefaultPlugInPath();
// Loads the module at `path` (empty: the one beside the program): the plug-in, which stays loaded
// until CTarsaStandIn::Reset(), or null with one line saying why in `error`.
CTarsaPlugIn* TsLoadStancePlugIn(const std::string& path, std::wstring& error);
