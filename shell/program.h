// The program's run with a front end, whichever it is: what `tarsa` does between loading its
// plug-in and ending.
#pragma once

#include <string>

class CTarsaPlugIn;
class ITsFrontEnd;

// Installs `front_end`, says which plug-in was loaded (`plug_in`, may be null), opens the model
// at `model` (an empty model when empty), showing whatever opening prints, and runs the commands
// the front end gives until its input ends. False, with a message in `error`, when the model
// cannot be opened: nothing runs then.
bool TsRunProgram(ITsFrontEnd& front_end, const std::string& model, CTarsaPlugIn* plug_in,
                  std::wstring& error);
