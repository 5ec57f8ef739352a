// What Help says about the host's own commands: a one-line summary, and details of how each is
// answered. A command the table does not know has the summary of a plug-in's command.
#pragma once

#include <string>

std::wstring TsHelpSummary(const std::wstring& english_name);
// Lines ending in "\n"; empty when the summary says it all.
std::wstring TsHelpDetails(const std::wstring& english_name);
