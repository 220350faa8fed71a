#pragma once
// The one rule for names below a game's folder that Windows reads as they are written: the build
// refuses a file set that breaks it, and the uninstall passes over a backup record or removal
// line that breaks it, so every set the build accepts can be backed up, restored and removed.

#include <string>

// What makes `relative` (a '/'-separated path below a folder) something Windows would read as
// another file, a device, a pattern or no name at all; an empty string when it is fine.
// Refused: an empty name, bytes that are not UTF-8, a leading or trailing '/', control bytes,
// '\\', ':', '*', '?', '<', '>', '|', '"', a segment longer than the 255 characters a Windows name
// holds, a segment ending in '.' or ' ' (Windows drops them, so ".." and "a." lead elsewhere), and
// a segment naming a device (CON, PRN, AUX, NUL, CONIN$, CONOUT$, COM0-9, LPT0-9 and COM/LPT
// with a superscript 1, 2 or 3), in any letter case, with any extension and spaces before it. A
// doubled '/' is read as one.
std::string WindowsNameProblem(const std::string& relative);

// A byte as the messages about names show it: 0x1F.
std::string HexByte(unsigned char c);

inline bool IsWindowsName(const std::string& relative) { return WindowsNameProblem(relative).empty(); }
