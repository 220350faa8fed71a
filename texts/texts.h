#pragma once
// Every text the program shows: the window's title, label and buttons, the chooser's entries,
// and every message box's text and caption. Written as they read (UTF-8 source).

#include <string>

#include "install.h"
#include "version.h"
#include "steam_account.h"

namespace texts {

constexpr char windowTitle[] = LUDAX_PRODUCT_NAME;  // also the version resource's product name
constexpr char versionLabel[] = LUDAX_VERSION_LABEL;  // "GUI v.1.02", from version.h

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

// Why an install stopped: a box's text, or what a command says.
inline std::string InstallStopped(const InstallOutcome& outcome)
{
    switch (outcome.result) {
    case InstallOutcome::Result::backupFailed:
        return NotBackedUp(outcome.path);
    case InstallOutcome::Result::writeFailed:
        return NotWritten(outcome.path);
    case InstallOutcome::Result::folderFailed:
        return FolderNotMade(outcome.path);
    case InstallOutcome::Result::installed:
        break;
    }
    return std::string();
}

// The uninstall found the game's folder (or its cstrike folder) away: nothing was changed. A box
// captioned "Hiba:" with the warning icon, or a command's error.
inline std::string GameAway(const std::string& folder)
{
    return "The game's folder is not there:\n" + folder +
           "\nNothing was changed and the backup was kept. Put the game back where it was, then uninstall again.";
}

// Added under the game's uninstall message when something could not be undone, whatever the
// cause: the backup files stay, and so does the uninstall.
constexpr char backupKept[] =
    "Some files could not be put back or removed, so the backup was kept. Close the programs that "
    "use the game's files, free some disk space, then uninstall again.";

struct Game {
    const char* name;  // as a command line names it to the player
    const char* key;   // as a command line names it: cs16, css
    const char* installButton;
    const char* uninstallButton;
    const char* reinstallQuestion;
    const char* installed;
    const char* uninstalled;
    const char* running;  // the game is open: asked before an install or uninstall
};

inline constexpr Game cs16{
    "Counter-Strike 1.6",
    "cs16",
    "Counter Strike LuDAX config install",
    "Counter Strike LuDAX config uninstall",
    "Counter Strike LUDAX config already installed, do you want to reinstall?",
    "Counter Strike LUDAX config installed successfully!",
    "Counter Strike LUDAX config uninstalled!",
    "Counter-Strike is running. Close the game, then press Retry.",
};

inline constexpr Game css{
    "Counter-Strike: Source",
    "css",
    "Counter Strike Source LuDAX config install",
    "Counter Strike Source LuDAX config uninstall",
    "Counter Strike Source LUDAX config already installed, do you want to reinstall?",
    "Counter Strike Source LUDAX config installed successfully!",
    "Counter Strike Source LUDAX config uninstalled!",
    "Counter-Strike: Source is running. Close the game, then press Retry.",
};

// The texts of the game a profile installs.
inline const Game& Of(const PlaceGame& game) { return game.id == GameId::css ? css : cs16; }

// The uninstall's message, with the advice under it when the backup files stayed.
inline std::string Uninstalled(const Game& game, bool keptBackup)
{
    return keptBackup ? std::string(game.uninstalled) + "\n" + backupKept : std::string(game.uninstalled);
}

// The chooser's entry for a place: an account folder's name, or "Steam library: <path>".
inline std::string ChooserLabel(const SteamAccount& place)
{
    return place.library ? "Steam library: " + place.name : place.name;
}

// The command line (the window's texts above serve it too where they fit). Lines end with '\n';
// the program writes each as CR LF.
namespace command {

constexpr char usage[] =
    "Ludax config. installs the LUDAX tournament's configuration for Counter-Strike 1.6 (cs16) and\n"
    "Counter-Strike: Source (css). Without a command it opens its window.\n"
    "\n"
    "  Ludax.exe /?                                  this text\n"
    "  Ludax.exe /list                               the places that hold the games, numbered\n"
    "  Ludax.exe /install cs16|css [/place N] [/yes] [/log FILE]\n"
    "  Ludax.exe /uninstall cs16|css [/place N] [/log FILE]\n"
    "  Ludax.exe /log FILE                           the window, with a log\n"
    "\n"
    "  /place N   the place numbered N by /list; without it, the one place that holds the game\n"
    "             (install) or its configuration (uninstall)\n"
    "  /yes       install again where the configuration is installed already\n"
    "  /log FILE  adds a line to FILE for each file backed up, written, removed or restored\n"
    "Case does not matter, and - works as well as /. The program shows no window and no box for a\n"
    "command: start it with start /wait in a batch file, or with Start-Process -Wait -PassThru\n"
    "in PowerShell, to wait for it and read its exit status:\n"
    "  0 done                      5 the game is running\n"
    "  1 a bad command line        6 the install stopped (see its message)\n"
    "  2 Steam was not found       7 the uninstall could not undo everything, kept its backup\n"
    "  3 no such place, the game      files and can be started again\n"
    "    is not there, or more     8 another copy of the program is running\n"
    "    than one place holds it\n"
    "  4 installed already (without /yes), or not installed\n";

constexpr char steamNotFound[] =
    "Steam was not found: the registry holds no SteamPath under HKEY_CURRENT_USER\\Software\\Valve\\Steam.\n";
constexpr char anotherCopy[] =
    "Another copy of Ludax config. is running (its window, or another command): wait until it ends, then "
    "start this one again.\n";

inline std::string LogNotWritable(const std::string& path)
{
    return "The log " + path + " cannot be written: name a file in a folder that exists.\n";
}

inline std::string LogRefused(const std::string& path)
{
    return "The log " + path +
           " would be written among a game's files or into the backup files: name a file elsewhere.\n";
}

inline std::string Place(int number, const SteamAccount& place)
{
    return "place " + std::to_string(number) + " (" + ChooserLabel(place) + ")";
}

inline std::string NoSuchPlace(int number, std::size_t places)
{
    return "There is no place " + std::to_string(number) + ": Steam holds " + std::to_string(places) +
           " places with the games (Ludax.exe /list shows them).\n";
}

inline std::string GameNotThere(const Game& game) { return std::string(game.name) + " is in no place Steam holds.\n"; }

inline std::string GameNotIn(const Game& game, const std::string& place)
{
    return std::string(game.name) + " is not in " + place + ".\n";
}

inline std::string NotInstalled(const Game& game) { return "The configuration of " + std::string(game.name) + " is installed nowhere.\n"; }

inline std::string NotInstalledIn(const Game& game, const std::string& place)
{
    return "The configuration of " + std::string(game.name) + " is not installed in " + place + ".\n";
}

inline std::string InstalledAlready(const Game& game, const std::string& place)
{
    return "The configuration of " + std::string(game.name) + " is installed already in " + place +
           ": add /yes to install it again.\n";
}

// Several places fit: the player names one. Each line of `places` is "  <number>\t<label>".
inline std::string NameOne(const Game& game, bool installed, const std::string& places)
{
    return (installed ? "The configuration of " + std::string(game.name) + " is installed"
                      : std::string(game.name) + " is") +
           " in more than one place; name one with /place N:\n" + places;
}

inline std::string Running(const Game& game)
{
    return std::string(game.name) + " is running: close the game, then start the command again.\n";
}

}  // namespace command

}  // namespace texts
