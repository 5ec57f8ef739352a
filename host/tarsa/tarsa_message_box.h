// The host's message box. The host program shows it on the command line; the application keeps
// every message box shown, so that tests can see them.
#pragma once

// Style flags.
constexpr unsigned int TS_MB_OK = 0x00;
constexpr unsigned int TS_MB_ICONINFORMATION = 0x40;
// The answer of an OK box.
constexpr int TS_IDOK = 1;

// Shows `text` under `caption` and returns the button pressed.
int TarsaMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags);
