// The host program's window as the program's main() sees it, without any window toolkit type.
#pragma once

#include <functional>
#include <string>

class ITsFrontEnd;

// Whether a window can be shown: a display is named in the environment.
bool TsDisplayAvailable();

// Shows the window, with the host's panels docked, and calls `run` with the window as the front
// end; the window closes when `run` returns, and its result is returned.
int TsRunInWindow(const std::function<int(ITsFrontEnd&)>& run);

// Writes a PNG picture of the whole window (the view, the command line with `output`, the open
// panel) as the host has them now, without showing it: without a display it draws off screen.
// False with a message in `error`, and no file, when the picture cannot be written.
bool TsWriteWindowPicture(const std::string& path, const std::wstring& output, std::wstring& error);
