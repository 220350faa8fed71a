#pragma once
// What the uninstall accepts from its two backup files: both are plain files in the account
// folder that anyone may have edited, so neither may steer a deletion or a write elsewhere.

#include <string>

// A removal-list line: the account folder, a '/', then a path with no ".." segment.
bool IsRemovableBelow(const std::string& path, const std::string& accountFolder);

// A backup record name: relative to the content folder, not empty, no leading '/', no '\\',
// no ':' and no ".." segment.
bool IsRestorableName(const std::string& name);
