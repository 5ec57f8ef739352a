// The strings of the automation types that are alive: made by SysAllocString or
// SysAllocStringLen and not yet freed by SysFreeString. Tests compare the count before and after
// what they call, so that a string a script is handed and never given back shows as a leak in
// every build, not only in the sanitizer's.
#pragma once

long TsLiveStringCount();
