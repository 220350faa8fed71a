#pragma once
// One fresh Steam folder per measured run: <work>/<label>/steamapps/<account>/<game>/cstrike/.

#include <string>

#include "game_profile.h"

namespace bench {

struct RunTree {
    std::string root;           // removed as a whole after the run
    std::string steamappsPath;  // ends with '/', as the installer expects
    std::string account;
    std::string contentFolder;  // ends with '/'
    std::string archivePath;
    std::string removalListPath;
    std::string recordPath;  // what the installs wrote
    std::string draftPath;   // a rewrite of the removal list not finished
};

// Creates the tree down to an empty content folder.
RunTree MakeRunTree(const std::string& workFolder, const std::string& label, const GameProfile& game);

void RemoveRunTree(const RunTree& tree);

}  // namespace bench
