#pragma once
// The window speaks to Windows in UTF-16, whatever the system's code page: the program's UTF-8
// texts and paths are turned into it at the call.

#include <string>

#include "text_encoding.h"

inline std::wstring Wide(const std::string& utf8)
{
    std::u16string utf16;
    ToUtf16(utf8, utf16);
    return std::wstring(utf16.begin(), utf16.end());
}
