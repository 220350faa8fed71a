#pragma once
// Steam's list of game libraries, libraryfolders.vdf, in Steam's text key-value format. Two
// shapes exist:
//   old:  "LibraryFolders" { "TimeNextStatsReport" "..." "1" "D:\\SteamLibrary" }
//   new:  "libraryfolders" { "0" { "path" "C:\\Steam" ... "apps" { ... } } "1" { ... } }
// Only numeric keys name libraries.

#include <string>
#include <vector>

// The library paths the text lists, in file order, with "\\" read as '\' and "\"" as '"'.
// Damaged, truncated or binary text ends the reading: what was read before it counts.
std::vector<std::string> ParseLibraryFolders(const std::string& text);
