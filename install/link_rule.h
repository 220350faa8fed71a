#pragma once
// Where the install and the uninstall refuse to go: through a symbolic link, junction or other
// reparse point at or below the place's folder, whose target may lie anywhere.

#include <string>

#include "folders.h"

// True when `path` is `accountFolder` or lies below it and a link stands at the account folder,
// at `path` or anywhere between; also true when `path` lies elsewhere. Entries missing on the
// way end the search.
bool MeetsLink(const std::string& accountFolder, const std::string& path, KnownFolders* known);
