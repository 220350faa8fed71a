#pragma once
// The benchmark starts itself again for every measured operation, so that each child's peak
// memory belongs to that operation alone:
//   idle <report>                                   loads nothing: the baseline
//   install|uninstall <game> <steamapps> <account> <report>
//   flushed-copy <source> <destination> <report>    the copy that flushes each file
//   fill <game> <content folder>...                 prepares full game folders (not measured)
// A child started with its flushes off (flushes_off.h) makes them no-ops first, and fails when it
// cannot; every other child fails when its flushes would not reach the system.

#include <string>
#include <vector>

namespace bench {

bool IsChildMode(const std::string& mode);

// `args` starts with the mode; returns the process exit status.
int RunChildMode(const std::vector<std::string>& args);

}  // namespace bench
