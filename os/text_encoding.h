#pragma once
// Inside the program every path and text is UTF-8; the Win32 body turns it into UTF-16 at the
// system's door. Text an earlier version of the program wrote in the system's ANSI code page is
// recognised by not being UTF-8.

#include <cstddef>
#include <string>

// True when `bytes` is well-formed UTF-8 (no overlong forms, no surrogates, nothing past
// U+10FFFF).
bool IsUtf8(const std::string& bytes);

// How many UTF-16 units the UTF-8 text takes: what Windows counts a path's length in.
std::size_t Utf16Length(const std::string& utf8);

// UTF-8 as UTF-16; false, with `utf16` empty, for bytes that are not UTF-8.
bool ToUtf16(const std::string& utf8, std::u16string& utf16);

// UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string ToUtf8(const char16_t* utf16, std::size_t length);

// `text` with the letters A to Z in lower case and every other byte as it is: how the program
// compares names that Windows compares without regard to case.
std::string AsciiLower(std::string text);
// The same comparison without making either string anew.
bool SameIgnoringAsciiCase(const std::string& a, const std::string& b);

namespace sys {

// Text in the system's ANSI code page (Windows' CP_ACP; the POSIX body, standing in for a
// Western Windows, reads code page 1252), as UTF-8.
std::string AnsiToUtf8(const std::string& ansi);

}  // namespace sys
