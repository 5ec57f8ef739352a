// The host program's window as the program's main() sees it, without any window toolkit type.
#pragma once

#include <string>

// Whether a window can be shown: a display is named in the environment.
bool TsDisplayAvailable();

// Shows the window and reads the command line's input from it until the user closes it or the
// input ends. The command line's reader and writer are the window's until then.
void TsRunCommandLineInWindow();

// Writes a PNG picture of the whole window (the view, the command line with `output`, the open
// panel) as the host has them now, without showing it: without a display it draws off screen.
// False with a message in `error`, and no file, when the picture cannot be written.
bool TsWriteWindowPicture(const std::string& path, const std::wstring& output, std::wstring& error);
