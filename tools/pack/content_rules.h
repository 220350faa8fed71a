#pragma once
// Rules on what the set's files say, for what the game needs and the installer cannot see:
// text files with CR LF line ends, script paths and background tiles that name files of the set,
// the remote-console password replaced, the map rotation's maps at hand.

#include <string>
#include <vector>

#include "set_check.h"

// `names` are the set's record names; each is read from `setFolder`/<name>.
void CheckContents(const std::string& setFolder, const std::vector<std::string>& names,
                   std::vector<Finding>& findings);

// True for the record kinds the game reads as text (.cfg .rc .txt .res .lst .scr .gam .htm).
bool IsTextRecord(const std::string& name);
