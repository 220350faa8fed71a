#pragma once
// Every text the program shows: the window's title, label and buttons, the chooser's entries,
// and every message box's text and caption. Written as they read (UTF-8 source).

#include <string>

#include "resources.h"
#include "steam_account.h"

namespace texts {

constexpr char windowTitle[] = LUDAX_PRODUCT_NAME;  // also the version resource's product name
constexpr char versionLabel[] = LUDAX_VERSION_LABEL;  // "GUI v.1.02", from resources.h

// Captions. The two Hungarian ones ("Error!", "Error:") differ on purpose.
constexpr char errorCaption[] = "Error!";
constexpr char hibaExclamationCaption[] = "Hiba!";
constexpr char hibaColonCaption[] = "Hiba:";
constexpr char questionCaption[] = "Question";
constexpr char messageCaption[] = "Message";

// Steam cannot be found in the registry.
constexpr char registryFailed[] = "Registry read failed!";

// "Neither Counter Strike nor Counter Strike Source is installed (and started at least once)!
// I am exiting!"
constexpr char nothingInstalled[] =
    "Nincs feltelepítve (és legalább egyszer elindítva) sem a Counter Strike sem a Counter Strike Source!\n"
    "Kilépek!";

// "The folder could not be created! I am exiting!", the folder on the line after.
inline std::string FolderNotMade(const std::string& folder)
{
    return "Nem sikerült a könyvtár létrehozása!\nKilépek!\n" + folder;
}

inline std::string NotBackedUp(const std::string& file)
{
    return "Could not back up the file\n" + file + "\nNothing more was changed.";
}

inline std::string NotWritten(const std::string& file)
{
    return "Could not write the file\n" + file + "\nNothing more was changed.";
}

// Added under the game's uninstall message when something could not be undone, whatever the
// cause: the backup files stay, and so does the uninstall.
constexpr char backupKept[] =
    "Some files could not be put back or removed, so the backup was kept. Close the programs that "
    "use the game's files, free some disk space, then uninstall again.";

struct Game {
    const char* installButton;
    const char* uninstallButton;
    const char* reinstallQuestion;
    const char* installed;
    const char* uninstalled;
    const char* running;  // the game is open: asked before an install or uninstall
};

inline constexpr Game cs16{
    "Counter Strike LuDAX config install",
    "Counter Strike LuDAX config uninstall",
    "Counter Strike LUDAX config already installed, do you want to reinstall?",
    "Counter Strike LUDAX config installed successfully!",
    "Counter Strike LUDAX config uninstalled!",
    "Counter-Strike is running. Close the game, then press Retry.",
};

inline constexpr Game css{
    "Counter Strike Source LuDAX config install",
    "Counter Strike Source LuDAX config uninstall",
    "Counter Strike Source LUDAX config already installed, do you want to reinstall?",
    "Counter Strike Source LUDAX config installed successfully!",
    "Counter Strike Source LUDAX config uninstalled!",
    "Counter-Strike: Source is running. Close the game, then press Retry.",
};

// The chooser's entry for a place: an account folder's name, or "Steam library: <path>".
inline std::string ChooserLabel(const SteamAccount& place)
{
    return place.library ? "Steam library: " + place.name : place.name;
}

}  // namespace texts
