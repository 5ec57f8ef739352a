// The few platform types the host's interfaces use.
#pragma once

struct HWND__;
typedef HWND__* HWND;
