#pragma once
// Conversions between the tests' UTF-8 strings and the UTF-16 that windows and Win32 calls take.

#include <string>

std::wstring Widen(const std::string& text);
std::string Utf8(const std::wstring& text);
