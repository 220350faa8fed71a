#pragma once
// Every text the program shows: the window's title, label and buttons, the chooser's entries,
// and every message box's text and caption. Written as they read (UTF-8 source).

#include <string>

#include "action_log.h"
#include "call_status.h"
#include "install.h"
#include "steam_account.h"
#include "uninstall.h"
#include "verify.h"
#include "version.h"

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

// Why something failed, in words: the system's own message for its error, in the user's
// language, or the program's own reason for refusing.
inline std::string Why(const sys::Reason& reason)
{
    switch (reason.own) {
    case sys::Reason::Own::system:
        break;
    case sys::Reason::Own::notADiskFile:
        return "It is a device, a pipe or a folder, not a file on a disk.";
    case sys::Reason::Own::endedEarly:
        return "Fewer bytes could be read or written than the file holds: another program changed it, or the disk is "
               "full.";
    case sys::Reason::Own::link:
        return "A link (a junction or symbolic link) stands on the way: what lies behind it may be anywhere, so the "
               "program does not go through it.";
    case sys::Reason::Own::tooLargeToBackUp:
        return "The file is 2 GiB or larger, more than a backup record holds.";
    case sys::Reason::Own::gameFolderGone:
        return "The game's folder is not there.";
    }
    return sys::SystemMessage(reason.code);
}

inline std::string NotBackedUp(const std::string& file, const sys::Reason& why)
{
    return "Could not back up the file\n" + file + "\n" + Why(why) + "\nNothing more was changed.";
}

inline std::string NotWritten(const std::string& file, const sys::Reason& why)
{
    return "Could not write the file\n" + file + "\n" + Why(why) + "\nNothing more was changed.";
}

// Backup files copied here from the game at another place: nothing was changed. A box captioned
// "Hiba:" with the warning icon, or a command's error.
inline std::string BelongsElsewhere(const std::string& folder)
{
    return "These backup files belong to the game at\n" + folder + "\nNothing was changed.";
}

// Why an install stopped: a box's text, or what a command says.
inline std::string InstallStopped(const InstallOutcome& outcome)
{
    switch (outcome.result) {
    case InstallOutcome::Result::elsewhere:
        return BelongsElsewhere(outcome.path);
    case InstallOutcome::Result::backupFailed:
        return NotBackedUp(outcome.path, outcome.reason);
    case InstallOutcome::Result::writeFailed:
        return NotWritten(outcome.path, outcome.reason);
    case InstallOutcome::Result::folderFailed:
        return FolderNotMade(outcome.path);
    case InstallOutcome::Result::installed:
    case InstallOutcome::Result::changedSince:
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
    const char* notFullyUninstalled;  // the uninstall kept the backup files
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
    "Counter Strike LUDAX config could not be fully uninstalled.",
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
    "Counter Strike Source LUDAX config could not be fully uninstalled.",
    "Counter-Strike: Source is running. Close the game, then press Retry.",
};

// The texts of a game.
inline const Game& Of(GameId game) { return game == GameId::css ? css : cs16; }

// The uninstall's message; when the backup files stayed, that it could not finish, the advice,
// then the first thing it could not undo and why (a box captioned "Hiba:" with the warning icon).
inline std::string Uninstalled(const Game& game, const UninstallOutcome& outcome)
{
    if (!outcome.backupKept)
        return game.uninstalled;
    return std::string(game.notFullyUninstalled) + "\n" + backupKept + "\n" + outcome.firstFailure.path + "\n" +
           Why(outcome.firstFailure.reason);
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
    "Ludax config. installs the LUDAX tournament's configuration for Counter-Strike\n"
    "1.6 (cs16) and Counter-Strike: Source (css). Without a command it opens its\n"
    "window.\n"
    "\n"
    "  Ludax.exe /?                    this text\n"
    "  Ludax.exe /version              the version and the file sets of this build\n"
    "  Ludax.exe /list                 the places that hold the games, numbered\n"
    "  Ludax.exe /install cs16|css [/place N] [/yes]\n"
    "  Ludax.exe /uninstall cs16|css [/place N]\n"
    "  Ludax.exe /verify cs16|css [/place N]\n"
    "                                  each file not as shipped: changed or missing\n"
    "The last four also take /steam DIR and /log FILE, and so does the window.\n"
    "\n"
    "  /place N    the place numbered N by /list; without it, the one place that\n"
    "              holds the game (install) or its configuration (uninstall, verify)\n"
    "  /yes        install over files changed since the configuration was installed\n"
    "  /steam DIR  Steam's folder; without it, the registry's (the user's SteamPath,\n"
    "              else the machine's InstallPath)\n"
    "  /log FILE   adds to FILE a line for the start and the end of the run and for\n"
    "              each file backed up, written, removed or restored\n"
    "Case does not matter, and - works as well as /. A command opens no window;\n"
    "started with no console to write to (from a shortcut), it says what it has to\n"
    "say in a box. /install writes only what is not as shipped. In a batch file\n"
    "call the program directly: the batch file waits for it and sets errorlevel to\n"
    "its exit status:\n"
    "  0 done; also /install with every file as shipped, /uninstall of nothing\n"
    "  1 a bad command line, or a log that cannot be written there\n"
    "  2 Steam was not found, or its folder is not there\n"
    "  3 no such place, the game is not there, or more than one place holds it\n"
    "  4 a file was changed since the install wrote it (add /yes to write it\n"
    "    over), or /verify where the configuration is not installed\n"
    "  5 the game is running\n"
    "  6 the install stopped (see its message)\n"
    "  7 the uninstall could not undo everything and kept its backup files\n"
    "  8 another copy of the program is running\n"
    "  9 a file is not as shipped (/verify)\n";

constexpr char steamNotFound[] =
    "Steam was not found: the registry holds neither SteamPath under HKEY_CURRENT_USER\\Software\\Valve\\Steam "
    "nor InstallPath under HKEY_LOCAL_MACHINE\\SOFTWARE\\Valve\\Steam. Name Steam's folder with /steam DIR.\n";
constexpr char anotherCopy[] =
    "Another copy of Ludax config. is running (its window, or another command): wait until it ends, then "
    "start this one again.\n";

// /install where every file of the set stands as shipped: nothing is written.
constexpr char alreadyInstalled[] = "already installed\n";

// /uninstall where no place holds the game's backup files: nothing to do.
constexpr char notInstalled[] = "not installed\n";

inline std::string SteamFolderNotThere(const std::string& folder) { return "Steam's folder is not there: " + folder + "\n"; }

// What a run of this build says it is: "Ludax config. 1.02 (cs16 <id>, css <id>)", each id naming
// the file set the build carries.
inline std::string BuildName(const std::string& cs16Id, const std::string& cssId)
{
    return std::string(LUDAX_PRODUCT_NAME " " LUDAX_VERSION_TEXT " (cs16 ") + cs16Id + ", css " + cssId + ")";
}

// A file of the set not as shipped, as /verify lists it (and /install without /yes): one that
// cannot be read says why.
inline std::string FileNotAsShipped(const NotAsShipped& file)
{
    switch (file.state) {
    case Sameness::missing:
        return "missing\t" + file.path + "\n";
    case Sameness::unreadable:
        return "unreadable\t" + file.path + "\t" + Why(file.reason) + "\n";
    case Sameness::same:
    case Sameness::differs:
        break;
    }
    return "changed\t" + file.path + "\n";
}

inline std::string LogNotWritable(const std::string& path)
{
    return "The log " + path + " cannot be written: name a file in a folder that exists.\n";
}

inline std::string LogAmongGameFiles(const std::string& path)
{
    return "The log " + path +
           " would be written among a game's files or into the backup files: name a file elsewhere.\n";
}

inline std::string NotALog(const std::string& path)
{
    return "The log " + path + " is not a log of this program: name a new file, or a log this program wrote.\n";
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

// Files someone changed since the install wrote them (listed on standard output): nothing written.
inline std::string ChangedSince(const Game& game, const std::string& place)
{
    return "Files of the configuration of " + std::string(game.name) + " in " + place +
           " were changed since it was installed (listed on standard output): add /yes to write them over.\n";
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

// The log's words: each action's, and what happened, in one line, in a run's "ended" line.
namespace summary {

inline const char* Action(Did did)
{
    switch (did) {
    case Did::backedUp:
        return "backed up";
    case Did::wrote:
        return "wrote";
    case Did::madeFolder:
        return "made folder";
    case Did::removed:
        return "removed";
    case Did::restored:
        return "restored";
    case Did::kept:
        return "kept";
    case Did::stopped:
        break;
    }
    return "stopped";
}

constexpr char installed[] = "installed";
constexpr char alreadyInstalled[] = "already installed, every file as shipped";
constexpr char uninstalled[] = "uninstalled";
constexpr char notInstalled[] = "not installed";
constexpr char asShipped[] = "every file as shipped";
constexpr char windowClosed[] = "the window was closed";
constexpr char windowFailed[] = "the window could not be made";
constexpr char steamNotFound[] = "Steam was not found";
constexpr char noGame[] = "neither game is in a place Steam holds";

inline std::string SteamFolderNotThere(const std::string& folder) { return "Steam's folder is not there: " + folder; }

inline std::string ChangedSince(std::size_t files)
{
    return "installed already, " + std::to_string(files) + " of the files changed since";
}

inline std::string NotAsShipped(std::size_t files) { return std::to_string(files) + " of the files not as shipped"; }

inline std::string PlacesListed(std::size_t places) { return std::to_string(places) + " places listed"; }

// Where something stopped and why, its path in Windows form.
inline std::string AtWhy(const std::string& path, const sys::Reason& why) { return WindowsPath(path) + ": " + Why(why); }

inline std::string InstallStopped(const InstallOutcome& outcome)
{
    return outcome.result == InstallOutcome::Result::elsewhere
               ? "nothing changed, the backup files belong to the game at " + WindowsPath(outcome.path)
               : "the install stopped at " + AtWhy(outcome.path, outcome.reason);
}

inline std::string BackupKept(const sys::Failure& first)
{
    return "the uninstall kept the backup files, first at " + AtWhy(first.path, first.reason);
}

inline std::string GameAway(const std::string& folder) { return "nothing changed, the game's folder is not there: " + folder; }

inline std::string BelongsElsewhere(const std::string& folder)
{
    return "nothing changed, the backup files belong to the game at " + folder;
}

}  // namespace summary

}  // namespace texts
