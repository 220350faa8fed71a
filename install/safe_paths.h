#pragma once
// Where the install and the uninstall may write, create and delete: only below the game's own
// folder, never through a link below the content folder, and only names Windows reads as they
// are written (windows_names.h). Links at or above the content folder are the player's layout
// (a game moved to another drive with a junction) and are followed.

#include <string>

#include "folders.h"

// True when `path` names something inside `folder` (neither ending with '/').
bool IsBelow(const std::string& path, const std::string& folder);

// A removal-list line the uninstall may act on: a path below the content folder, or one of the
// folders from the game's folder down to the content folder (which an install makes when they
// are missing), written exactly as the install builds paths (another letter case or separator
// is somewhere else), each segment a Windows name. The backup files lie outside the game's
// folder, so no line can name them.
bool IsRemovableLine(const std::string& path, const std::string& gameFolder, const std::string& contentFolder);

enum class Way {
    clear,    // no link at `path` or on the way to it below the content folder
    link,     // a link stands there: nothing of ours lies behind it
    unknown,  // the system could not tell what stands there
};

// What stands at `path` and on the way to it below `contentFolder` (which ends with '/'). A
// path at or above the content folder is not looked at. A missing entry ends the search:
// nothing deeper exists either.
Way WayTo(const std::string& contentFolder, const std::string& path, KnownFolders* known);
