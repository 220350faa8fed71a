#pragma once
// Paths of any length. Windows holds most calls to paths of 259 characters (folders to 247),
// unless a path comes in its extended-length form "\\?\C:\..." or "\\?\UNC\server\share\...".
// That form takes every character literally, so the OS layer builds it only for a path too long
// for the plain call, on a copy made for the call, resolving what Windows resolves in a plain
// path: '/' as '\', doubled separators, "." and ".." segments, and the trailing dots and spaces
// of the last segment. The paths the program builds, lists and shows stay as built.

#include <string>

// The extended-length form of an absolute UTF-8 path ("C:/x" or "\\server\share\x", either
// separator); the path unchanged when it is relative, drive-relative or in that form already.
std::string ExtendedLengthPath(const std::string& path);
