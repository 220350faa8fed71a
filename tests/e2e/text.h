#pragma once
// Conversions between the program's ANSI strings and the UNICODE text windows report.

#include <string>

// As the system turns an ANSI string into the text a window shows (the ANSI code page).
std::wstring Widen(const std::string& text);

// For failure messages: ASCII kept, anything else shown as '?'.
std::string Narrow(const std::wstring& text);
