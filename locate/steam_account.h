#pragma once

#include <string>

// One folder below steamapps that holds a game folder or a backup archive.
struct SteamAccount {
    std::string name;
    bool hasCs16 = false;
    bool hasCss = false;
    bool hasCs16Backup = false;  // the Counter-Strike 1.6 configuration is installed
    bool hasCssBackup = false;   // the Counter-Strike: Source configuration is installed
};
