// The user's terminal: lines read with line editing (libedit), a history kept between runs in
// ~/.tarsa_history, and Tab completion of command and option names (shell/completion.h).
#pragma once

#include "shell/script_input.h"

// A reader of the terminal for CTarsaScriptInput::SetTerminal. The history is read at the first
// call and written after each line.
CTarsaScriptInput::Reader TsTerminalReader();
