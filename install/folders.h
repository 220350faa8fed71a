#pragma once
// The folder operations the install and the uninstall share. Paths use '/' only.

#include <string>
#include <unordered_map>
#include <vector>

// What one run has learned about the entries on its paths, so that none is looked up twice:
// each folder found or made on the way to a target (or a file found where such a folder
// belongs), mapped to whether it is a link. A target file is about to change and is always
// looked up afresh.
using KnownFolders = std::unordered_map<std::string, bool>;

// Makes every missing folder on the way to the file `path` (the file's own name is never made).
// When `created` is given, each folder is appended to it before it is made, outermost first.
// Prefixes of up to 3 characters (a drive letter with its colon, the empty root) are not
// tested, and neither is a prefix that `known` already holds. Returns the first folder that
// can neither be found nor made, or an empty string when every folder is there.
[[nodiscard]] std::string CreateFolders(const std::string& path, std::vector<std::string>* created,
                                        KnownFolders* known = nullptr);

// Deletes one file or one empty folder; a missing path, a folder that still holds something,
// a file that cannot go and a link of any kind (which some systems would delete the target of)
// are all left alone silently.
void RemovePath(const std::string& path);
