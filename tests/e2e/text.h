#pragma once
// Conversions between the tests' UTF-8 strings and the UNICODE text windows report.

#include <string>

// UTF-8 as the UTF-16 a window reports.
std::wstring Widen(const std::string& text);

// UTF-16 as UTF-8.
std::string Utf8(const std::wstring& text);

// For failure messages: ASCII kept, anything else shown as '?'.
std::string Narrow(const std::wstring& text);
