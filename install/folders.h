#pragma once
// The folders on the way to a file: what a run has learned of them, and the making of those
// missing before the uninstall puts a file back. Paths use '/' only.

#include <string>
#include <unordered_map>

#include "call_status.h"

// What one run has learned about the entries on its paths, so that none is looked up twice:
// each folder found or made on the way to a target (or a file found where such a folder
// belongs), mapped to whether it is a link. A target file is about to change and is always
// looked up afresh.
using KnownFolders = std::unordered_map<std::string, bool>;

// Makes every missing folder on the way to the file `path` (the file's own name is never made).
// Prefixes of up to 3 characters (a drive letter with its colon, the empty root) are not
// tested, and neither is a prefix that `known` already holds. Returns the first folder that
// can neither be found nor made and why, or no failure when every folder is there.
[[nodiscard]] sys::Failure CreateFolders(const std::string& path, KnownFolders* known = nullptr);
