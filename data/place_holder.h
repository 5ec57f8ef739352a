// The text written after the version in each of the plug-in's blocks of a model file (the
// document's stance table and every placement record), and skipped, whatever it says, on reading.
#pragma once

inline constexpr wchar_t kKorvoPlaceHolder[] = L"Place Holder";
