#pragma once

#include <string>

// One place that holds a game folder or a backup archive: an account folder below steamapps
// (Steam before shared game folders), or the shared game folder of a Steam library.
struct SteamAccount {
    std::string name;         // the account folder's bare name, or the library's path as Steam wrote it
    bool library = false;     // a Steam library's shared game folder, not an account folder
    std::string folder;       // holds the backup archive and the removal list; no trailing '/'
    std::string cs16Game;     // Counter-Strike 1.6's own folder: nothing outside it is changed
    std::string cssGame;      // Counter-Strike: Source's own folder
    std::string cs16Content;  // where the Counter-Strike 1.6 files go, below cs16Game; ends with '/'
    std::string cssContent;   // where the Counter-Strike: Source files go, below cssGame; ends with '/'
    bool hasCs16 = false;
    bool hasCss = false;
    bool hasCs16Backup = false;  // the Counter-Strike 1.6 configuration is installed
    bool hasCssBackup = false;   // the Counter-Strike: Source configuration is installed
};
